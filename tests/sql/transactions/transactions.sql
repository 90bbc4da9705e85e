-- Rows: what COMMIT keeps and ROLLBACK brings back.
CREATE TABLE t (a integer, s string);
INSERT INTO t VALUES (1, 'one');
INSERT INTO t VALUES (2, 'two');
ROLLBACK;
-- The table went with its rows: it was made in the same transaction.
SELECT * FROM t;
--! 42S02 Error: Table t not found.
CREATE TABLE t (a integer, s string);
COMMIT;
INSERT INTO t VALUES (1, 'one');
INSERT INTO t VALUES (2, 'two');
SELECT * FROM t;
--> 1|1|one
--> 2|2|two
ROLLBACK;
SELECT * FROM t;
-- Row numbers of a transaction that was rolled back are handed out again.
INSERT INTO t VALUES (1, 'one');
INSERT INTO t VALUES (2, 'two');
INSERT INTO t VALUES (3, 'three');
COMMIT;
SELECT * FROM t;
--> 1|1|one
--> 2|2|two
--> 3|3|three
UPDATE t SET s = 'TWO' WHERE a = 2;
DELETE FROM t WHERE a = 1;
INSERT INTO t VALUES (4, 'four');
UPDATE t SET a = a + 10;
SELECT * FROM t;
--> 2|12|TWO
--> 3|13|three
--> 4|14|four
ROLLBACK;
SELECT * FROM t;
--> 1|1|one
--> 2|2|two
--> 3|3|three
-- The same again, kept.
UPDATE t SET s = 'TWO' WHERE a = 2;
DELETE FROM t WHERE a = 1;
INSERT INTO t VALUES (4, 'four');
UPDATE t SET a = a + 10;
DELETE FROM t WHERE s = 'four';
COMMIT;
ROLLBACK;
SELECT * FROM t;
--> 2|12|TWO
--> 3|13|three
--reopen
SELECT * FROM t;
--> 2|12|TWO
--> 3|13|three
INSERT INTO t VALUES (5, 'five');
SELECT _rowid FROM t WHERE a = 5;
--> 5
-- Two updates of a row are one change.
UPDATE t SET a = 50 WHERE a = 5;
UPDATE t SET s = 'fifty' WHERE a = 50;
UPDATE t SET a = 51 WHERE a = 50;
COMMIT;
SELECT * FROM t WHERE _rowid = 5;
--> 5|51|fifty
UPDATE t SET a = 52 WHERE _rowid = 5;
UPDATE t SET s = 'x' WHERE _rowid = 5;
ROLLBACK;
SELECT * FROM t WHERE _rowid = 5;
--> 5|51|fifty
-- A row that was deleted, then asked for, then brought back.
DELETE FROM t;
SELECT * FROM t;
SELECT COUNT(*) FROM t;
--> 0
UPDATE t SET a = 1;
ROLLBACK;
SELECT COUNT(*) FROM t;
--> 3
-- A failed statement keeps what it did; the transaction goes on.
INSERT INTO t (_rowid, a) VALUES (5, 0);
--! 23000 Constraint violation.
INSERT INTO t (a) VALUES (60);
COMMIT;
SELECT _rowid, a FROM t;
--> 2|12
--> 3|13
--> 5|51
--> 6|60
-- A row that was made and deleted in one transaction leaves nothing but its number.
INSERT INTO t (a) VALUES (70);
DELETE FROM t WHERE a = 70;
COMMIT;
INSERT INTO t (a) VALUES (80);
SELECT _rowid, a FROM t WHERE a = 80;
--> 8|80
COMMIT;
COMMIT;
ROLLBACK;
SELECT COUNT(*) FROM t;
--> 5
