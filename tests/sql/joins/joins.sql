CREATE TABLE a (n integer, s string);
CREATE TABLE b (n integer, t string);
CREATE TABLE c (n integer, u string);
INSERT INTO a VALUES (1, 'a1');
INSERT INTO a VALUES (2, 'a2');
INSERT INTO b VALUES (1, 'b1');
INSERT INTO b VALUES (2, 'b2');
INSERT INTO b VALUES (2, 'b3');
INSERT INTO c VALUES (2, 'c1');
INSERT INTO c VALUES (1, 'c2');

-- The table that is taken last keeps its order, those before it run backwards.
SELECT s, t FROM a, b;
--> a2|b1
--> a2|b2
--> a2|b3
--> a1|b1
--> a1|b2
--> a1|b3
SELECT s, t FROM b, a;
--> a1|b3
--> a2|b3
--> a1|b2
--> a2|b2
--> a1|b1
--> a2|b1
SELECT s, t, u FROM a, b, c;
--> a2|b3|c1
--> a2|b3|c2
--> a2|b2|c1
--> a2|b2|c2
--> a2|b1|c1
--> a2|b1|c2
--> a1|b3|c1
--> a1|b3|c2
--> a1|b2|c1
--> a1|b2|c2
--> a1|b1|c1
--> a1|b1|c2

-- Equal columns: the left one's table is taken first.
SELECT s, t FROM a, b WHERE a.n = b.n;
--> a2|b2
--> a2|b3
--> a1|b1
SELECT s, t FROM a, b WHERE b.n = a.n;
--> a2|b3
--> a2|b2
--> a1|b1
SELECT s, t, u FROM a, b, c WHERE a.n = b.n AND b.n = c.n;
--> a2|b3|c1
--> a2|b2|c1
--> a1|b1|c2
SELECT s, t, u FROM a, b, c WHERE c.n = a.n AND b.n = a.n;
--> a1|b1|c2
--> a2|b2|c1
--> a2|b3|c1
-- A term about one table alone has that table taken first.
SELECT s, t FROM a, b WHERE t <> 'b2' AND a.n = b.n;
--> a2|b3
--> a1|b1
SELECT s, t FROM a, b WHERE s = 'a1' AND a.n = b.n;
--> a1|b1
SELECT s, t, u FROM a, b, c WHERE t <> 'b3';
--> a2|b2|c2
--> a2|b2|c1
--> a1|b2|c2
--> a1|b2|c1
--> a2|b1|c2
--> a2|b1|c1
--> a1|b1|c2
--> a1|b1|c1
-- Other conditions.
SELECT s, t FROM a, b WHERE a.n < b.n;
--> a1|b2
--> a1|b3
SELECT s, t FROM a, b WHERE a.n = 1 OR b.n = 1;
--> a2|b1
--> a1|b1
--> a1|b2
--> a1|b3
SELECT s, t FROM a, b WHERE 1 = 1;
--> a2|b3
--> a2|b2
--> a2|b1
--> a1|b3
--> a1|b2
--> a1|b1
SELECT s, t FROM a, b WHERE a.n + 5 = b.n;

-- A table with itself.
SELECT x.s, y.s FROM a x, a y WHERE x.n <> y.n;
--> a2|a1
--> a1|a2
--= s|s
SELECT x.t, y.t FROM b AS x, b AS y WHERE x.n = y.n AND x.t < y.t;
--> b2|b3

-- Names: qualifiers in any case, columns exactly; the first table that has a column wins.
SELECT A.n, B.N FROM a, b;
--! 42S22 Error: Column B.N not found.
SELECT n, A.n, B.n FROM a, b WHERE t = 'b3' ORDER BY n;
--> 1|1|2
--> 2|2|2
SELECT n FROM b, a WHERE t = 'b1' AND a.s = 'a2';
--> 1
SELECT n, s, t FROM a, b WHERE n = 2 AND b.n = 1;
--> 2|a2|b1
SELECT a.s FROM a x;
--! 42S02 Error: Table a not found.
SELECT x.s FROM a x, a x WHERE x.n = 1;
--> a1
--> a1
SELECT z.s FROM a x, b y;
--! 42S02 Error: Table z not found.
SELECT x.t FROM a x, b y;
--! 42S22 Error: Column x.t not found.
SELECT s, t FROM a, nosuch, b;
--! 42S02 Error: Table nosuch not found.
SELECT nosuch FROM a, b;
--! 42S22 Error: Column nosuch not found.

-- Stars.
SELECT * FROM a, c WHERE a.n = c.n;
--> 2|2|a2|1|2|c1
--> 1|1|a1|2|1|c2
--= _rowid|n|s|_rowid|n|u
SELECT c.*, a.s, A.* FROM a, c WHERE a.n = c.n AND s = 'a2';
--> 1|2|c1|a2|2|2|a2
--= _rowid|n|u|s|_rowid|n|s
SELECT y.* FROM a x, b y WHERE x.n = 1 AND y.n = 1;
--> 1|1|b1
SELECT z.* FROM a, b;
--! 42S02 Error: Table z not found.
SELECT a.* FROM a x;
--! 42S02 Error: Table a not found.
SELECT *;
-->
SELECT a.*;
--! 42S02 Error: Table a not found.

-- An empty table leaves nothing.
CREATE TABLE none (n integer);
SELECT s FROM a, none;
SELECT s FROM none, a WHERE a.n = 1;
SELECT COUNT(*) FROM a, none;
--> 0

-- Aggregates, groups and orders over joins.
SELECT COUNT(*), SUM(a.n * b.n), MAX(t) FROM a, b;
--> 6|15|b3
SELECT s, COUNT(*), MIN(t) FROM a, b WHERE a.n <= b.n GROUP BY s;
--> a1|3|b1
--> a2|2|b2
SELECT s, t FROM a, b ORDER BY t, s;
--> a1|b1
--> a2|b1
--> a1|b2
--> a2|b2
--> a1|b3
--> a2|b3

-- Pending rows, changes and deletions take part.
UPDATE b SET n = 1 WHERE t = 'b3';
DELETE FROM a WHERE n = 2;
INSERT INTO a VALUES (1, 'a3');
SELECT s, t FROM a, b WHERE a.n = b.n;
--> a3|b1
--> a3|b3
--> a1|b1
--> a1|b3
COMMIT;
SELECT s, t FROM a, b WHERE a.n = b.n;
--> a3|b1
--> a3|b3
--> a1|b1
--> a1|b3
CREATE INDEX i ON b (n);
SELECT s, t FROM a, b WHERE a.n = b.n;
--> a3|b1
--> a3|b3
--> a1|b1
--> a1|b3
