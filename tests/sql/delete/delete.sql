CREATE TABLE t (a integer, s string);
INSERT INTO t VALUES (1, 'one');
INSERT INTO t VALUES (2, 'two');
INSERT INTO t VALUES (3, 'three');
INSERT INTO t VALUES (4, 'four');
COMMIT;
DELETE FROM t WHERE a = 2;
SELECT a FROM t;
--> 1
--> 3
--> 4
DELETE FROM t WHERE a = 2;
DELETE FROM t WHERE s LIKE 't%' OR t.a = 99;
SELECT a FROM t;
--> 1
--> 4
DELETE FROM t WHERE 1/0;
DELETE FROM t WHERE NULL;
DELETE FROM t WHERE 0;
SELECT a FROM t;
--> 1
--> 4
ROLLBACK;
-- A comparison whose right side can't be computed leaves its left side: this deletes every row but 0.
DELETE FROM t WHERE a = 1/0;
SELECT a FROM t;
ROLLBACK;
-- New, changed and deleted rows.
INSERT INTO t VALUES (5, 'five');
UPDATE t SET a = 30 WHERE a = 3;
DELETE FROM t WHERE a > 4;
SELECT * FROM t;
--> 1|1|one
--> 2|2|two
--> 4|4|four
COMMIT;
--reopen
SELECT * FROM t;
--> 1|1|one
--> 2|2|two
--> 4|4|four
DELETE FROM t;
SELECT COUNT(*) FROM t;
--> 0
INSERT INTO t VALUES (6, 'six');
COMMIT;
SELECT * FROM t;
--> 6|6|six
-- What is wrong.
DELETE FROM nosuch;
--! 42S02 Error: Table nosuch not found.
DELETE FROM t WHERE nosuch = 1;
--! 42S22 Error: Column nosuch not found.
DELETE FROM t WHERE x.a = 1;
--! 42S02 Error: Table x not found.
DELETE FROM t WHERE SUM;
SELECT COUNT(*) FROM t;
--> 1
