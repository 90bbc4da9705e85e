CREATE TABLE t (a integer, b string, c double);
INSERT INTO t VALUES (1, 'one', 1.5);
INSERT INTO t VALUES (2, 'two', 2.5);
INSERT INTO t VALUES (3, 'three', 3.5);
COMMIT;
UPDATE t SET c = 5;
SELECT c FROM t;
--> 5
--> 5
--> 5
UPDATE t SET a = a + 1, b = b + a WHERE a >= 2;
SELECT * FROM t;
--> 1|1|one|5
--> 2|3|two2|5
--> 3|4|three3|5
-- The old values count, also where columns are exchanged.
UPDATE t SET a = c, c = a;
SELECT * FROM t;
--> 1|5|one|1
--> 2|5|two2|3
--> 3|5|three3|4
-- Values take the column's type.
UPDATE t SET a = '42 apples', b = 1.50, c = TRUE WHERE _rowid = 1;
UPDATE t SET a = 2.9, b = DATE '1994-7-9', c = '1e3' WHERE _rowid = 2;
SELECT * FROM t;
--> 1|42|1.5|1
--> 2|2|DATE 1994-07-09|1000
--> 3|5|three3|4
-- The default is the empty value of the type.
UPDATE t SET a = DEFAULT, b = default WHERE _rowid = 3;
SELECT * FROM t WHERE _rowid = 3;
--> 3|0||4
-- No row, no change, no complaint.
UPDATE t SET a = 9 WHERE a = 99;
UPDATE t SET a = 9 WHERE 1/0;
UPDATE t SET a = 9 WHERE NULL;
SELECT a FROM t;
--> 42
--> 2
--> 0
-- The same column twice: the last one counts.
UPDATE t SET a = 1, a = 2 WHERE _rowid = 3;
SELECT a FROM t WHERE _rowid = 3;
--> 2
ROLLBACK;
SELECT * FROM t;
--> 1|1|one|1.5
--> 2|2|two|2.5
--> 3|3|three|3.5

-- What is wrong, in the order of the checks.
UPDATE nosuch SET x = y;
--! 42S02 Error: Table nosuch not found.
UPDATE t SET a = 1, nosuch = 2 WHERE nosuch = 3;
--! 42S22 Error: Column nosuch not found.
UPDATE t SET A = 1;
--! 42S22 Error: Column A not found.
UPDATE t SET t.a = 1;
--! 42S22 Error: Column t.a not found.
UPDATE t SET a = nosuch, nosuch = 2;
--! 22000 Error: Couldn't evaluate nosuch.
UPDATE t SET a = 1 + x.b * 2;
--! 22000 Error: Couldn't evaluate (1+(x.b*2)).
UPDATE t SET a = DEFAULT + 1;
--! 22000 Error: Couldn't evaluate (DEFAULT+1).
UPDATE t SET a = 1 WHERE nosuch = 2;
--! 42S22 Error: Column nosuch not found.
UPDATE t SET a = 1 WHERE x.a = 2;
--! 42S02 Error: Table x not found.
UPDATE t SET a = t.a + 1 WHERE t.a = 1;
SELECT a FROM t WHERE b = 'one';
--> 2
-- A condition that is not complete ends the statement without a word.
UPDATE t SET a = 100 WHERE SUM;
SELECT COUNT(*) FROM t WHERE a = 100;
--> 0
-- A value that can't be computed ends it at that row; the rows before it are changed.
UPDATE t SET a = 10 / (c - 2.5) + 1, b = 'changed ' + b;
SELECT b FROM t;
--> changed one
--> changed two
--> changed three
ROLLBACK;
UPDATE t SET a = 10 / (a - 2), b = 'x';
--! 07000 Error: UPDATE failed.
SELECT * FROM t;
--> 1|-10|x|1.5
--> 2|2|two|2.5
--> 3|3|three|3.5
ROLLBACK;
UPDATE t SET a = 1/0;
--! 07000 Error: UPDATE failed.
UPDATE t SET a = COUNT(*);
--! 07000 Error: UPDATE failed.
SELECT * FROM t;
--> 1|1|one|1.5
--> 2|2|two|2.5
--> 3|3|three|3.5
-- A changed row keeps its place until COMMIT; one that has outgrown it then moves to the end.
UPDATE t SET b = 'a text that is a good deal longer than the one that was there before' WHERE a = 1;
SELECT a FROM t;
--> 1
--> 2
--> 3
COMMIT;
SELECT a FROM t;
--> 2
--> 3
--> 1
