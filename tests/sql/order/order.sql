CREATE TABLE o (i integer, d double, s string, b boolean, day date);
INSERT INTO o VALUES (10, 2.5, 'b', TRUE, '2020-02-01');
INSERT INTO o VALUES (9, 10.5, 'B', FALSE, '2019-12-31');
INSERT INTO o VALUES (-1, -0.5, 'é', TRUE, '2020-10-01');
INSERT INTO o VALUES (9, 2.5, '', FALSE, '0999-01-01');
INSERT INTO o VALUES (100, 2.25, 'ba', TRUE, '2020-02-01');

-- Without ORDER BY rows come as they lie in the table.
SELECT i FROM o;
--> 10
--> 9
--> -1
--> 9
--> 100
SELECT i FROM o ORDER BY i;
--> -1
--> 9
--> 9
--> 10
--> 100
SELECT i FROM o ORDER BY i DESC;
--> 100
--> 10
--> 9
--> 9
--> -1
SELECT d FROM o ORDER BY d ASC;
--> -0.5
--> 2.25
--> 2.5
--> 2.5
--> 10.5
-- Texts by their bytes.
SELECT s FROM o ORDER BY s;
-->
--> B
--> b
--> ba
--> é
SELECT b, i FROM o ORDER BY b;
--> FALSE|9
--> FALSE|9
--> TRUE|10
--> TRUE|-1
--> TRUE|100
SELECT day FROM o ORDER BY day DESC;
--> 2020-10-01
--> 2020-02-01
--> 2020-02-01
--> 2019-12-31
--> 0999-01-01
-- Rows equal on all keys keep their order, also backwards.
SELECT _rowid, i FROM o ORDER BY i;
--> 3|-1
--> 2|9
--> 4|9
--> 1|10
--> 5|100
SELECT _rowid, day FROM o ORDER BY day DESC;
--> 3|2020-10-01
--> 1|2020-02-01
--> 5|2020-02-01
--> 2|2019-12-31
--> 4|0999-01-01
-- Several keys.
SELECT i, d FROM o ORDER BY i, d;
--> -1|-0.5
--> 9|2.5
--> 9|10.5
--> 10|2.5
--> 100|2.25
SELECT i, d FROM o ORDER BY i DESC, d DESC;
--> 100|2.25
--> 10|2.5
--> 9|10.5
--> 9|2.5
--> -1|-0.5
SELECT b, s FROM o ORDER BY b DESC, s;
--> TRUE|b
--> TRUE|ba
--> TRUE|é
--> FALSE|
--> FALSE|B
-- Names of items; the first that fits.
SELECT i AS x, d AS y FROM o WHERE i > 9 ORDER BY y;
--> 100|2.25
--> 10|2.5
SELECT -i AS minus, i FROM o WHERE i >= 9 ORDER BY minus;
--> -100|100
--> -10|10
--> -9|9
--> -9|9
SELECT d AS i, i AS d FROM o WHERE i > 9 ORDER BY i;
--> 2.25|100
--> 2.5|10
SELECT i AS x, d AS x FROM o WHERE i > 9 ORDER BY x;
--> 10|2.5
--> 100|2.25
SELECT * FROM o WHERE i = 9 ORDER BY d, _rowid;
--> 4|9|2.5||FALSE|0999-01-01
--> 2|9|10.5|B|FALSE|2019-12-31
-- A qualified name fits the item that is that column, whatever it is called.
SELECT o.i, s FROM o WHERE i > 9 ORDER BY i DESC;
--> 100|ba
--> 10|b
SELECT i AS x FROM o WHERE i > 9 ORDER BY o.i DESC;
--> 100
--> 10
SELECT i AS x FROM o T WHERE i > 9 ORDER BY t.i DESC;
--> 100
--> 10
-- What fits no item is passed over: no column at all, one that is not selected, one renamed.
SELECT i FROM o ORDER BY nosuch;
--> 10
--> 9
--> -1
--> 9
--> 100
SELECT i FROM o WHERE i > 8 ORDER BY d DESC, i;
--> 9
--> 9
--> 10
--> 100
SELECT i AS x FROM o WHERE i > 9 ORDER BY i DESC;
--> 10
--> 100
SELECT i FROM o WHERE i > 9 ORDER BY T.i DESC, o.nosuch;
--> 10
--> 100
SELECT i FROM o WHERE i > 9 ORDER BY I DESC;
--> 10
--> 100
-- Only words can be keys.
SELECT i FROM o ORDER BY 1;
--! 07000 SQL Error: column name expected
SELECT i FROM o ORDER BY i + 1;
--! 07000 SQL Error: keyword expected
SELECT i FROM o ORDER BY UPPER(s);
--! 07000 SQL Error: keyword expected
-- A value that is missing is no hindrance.
INSERT INTO o (s) VALUES ('late');
SELECT i, s FROM o WHERE s = 'late' OR s = 'b' ORDER BY s;
--> 10|b
--> NULL|late
