CREATE TABLE r (a integer);
INSERT INTO r VALUES (1);
INSERT INTO r VALUES (2);
INSERT INTO r (_rowid, a) VALUES (7, 3);
INSERT INTO r VALUES (4);
SELECT * FROM r;
--> 1|1
--> 2|2
--> 7|3
--> 8|4
INSERT INTO r (_rowid, a) VALUES (7, 5);
--! 23000 Constraint violation.
INSERT INTO r (a, _rowid) VALUES (5, 1);
--! 23000 Constraint violation.
INSERT INTO r (_rowid, a) VALUES ('5 a', 6);
INSERT INTO r (_rowid) VALUES (2.9);
--! 23000 Constraint violation.
SELECT _rowid, a FROM r WHERE _rowid > 4;
--> 7|3
--> 8|4
--> 5|6
COMMIT;
INSERT INTO r (_rowid, a) VALUES (5, 9);
--! 23000 Constraint violation.
INSERT INTO r VALUES (9);
SELECT _rowid FROM r WHERE a = 9;
--> 9
-- It can be asked for everywhere, and not be changed.
SELECT r._rowid, a FROM r WHERE _rowid = 2 OR _rowid + a = 12;
--> 2|2
--> 8|4
SELECT MAX(_rowid), COUNT(_rowid) FROM r;
--> 9|6
SELECT _rowid FROM r ORDER BY _rowid DESC;
--> 9
--> 8
--> 7
--> 5
--> 2
--> 1
UPDATE r SET _rowid = 100, a = 20 WHERE _rowid = 2;
SELECT _rowid, a FROM r WHERE a = 20;
--> 2|20
UPDATE r SET a = _rowid * 10;
SELECT * FROM r WHERE _rowid >= 7;
--> 7|70
--> 8|80
--> 9|90
DELETE FROM r WHERE _rowid = 9;
COMMIT;
INSERT INTO r VALUES (10);
SELECT _rowid FROM r WHERE a = 10 AND _rowid > 1;
--> 10
-- A deleted row's number is taken until COMMIT has taken it away, and on.
INSERT INTO r (_rowid, a) VALUES (50, 1);
COMMIT;
DELETE FROM r WHERE _rowid = 50;
INSERT INTO r (_rowid, a) VALUES (50, 2);
--! 23000 Constraint violation.
COMMIT;
INSERT INTO r (_rowid, a) VALUES (50, 2);
--! 23000 Constraint violation.
-- One that was made and deleted in one transaction is free again.
INSERT INTO r (_rowid, a) VALUES (60, 1);
DELETE FROM r WHERE _rowid = 60;
INSERT INTO r (_rowid, a) VALUES (61, 2);
COMMIT;
SELECT _rowid, a FROM r WHERE _rowid >= 50;
--> 61|2
-- Several in one list: the last one counts, each has to be free.
INSERT INTO r (_rowid, _rowid, a) VALUES (70, 71, 3);
INSERT INTO r (_rowid, _rowid, a) VALUES (61, 72, 3);
--! 23000 Constraint violation.
SELECT _rowid, a FROM r WHERE _rowid >= 70;
--> 71|3
COMMIT;

-- Numbers are 32 bits without a sign; printed as Integers the upper half is negative.
CREATE TABLE h (a integer);
INSERT INTO h (_rowid, a) VALUES (2147483647, 1);
INSERT INTO h VALUES (2);
SELECT _rowid, a FROM h;
--> 2147483647|1
--> -2147483648|2
INSERT INTO h (_rowid, a) VALUES (-3, 3);
INSERT INTO h VALUES (4);
SELECT _rowid, a FROM h;
--> 2147483647|1
--> -2147483648|2
--> -3|3
--> -2|4
-- 4294967294 was the last one.
INSERT INTO h VALUES (5);
--! 23000 Constraint violation.
INSERT INTO h DEFAULT VALUES;
--! 23000 Constraint violation.
INSERT INTO h SELECT a FROM r;
--! 23000 Constraint violation.
INSERT INTO h (_rowid, a) VALUES (-1, 6);
--! 23000 Constraint violation.
INSERT INTO h (_rowid, a) VALUES (10, 7);
COMMIT;
--reopen
SELECT _rowid, a FROM h WHERE a > 2;
--> -3|3
--> -2|4
--> 10|7
INSERT INTO h VALUES (5);
--! 23000 Constraint violation.
DELETE FROM h WHERE _rowid = -2;
UPDATE h SET a = 30 WHERE _rowid = -3;
COMMIT;
SELECT _rowid, a FROM h;
--> 2147483647|1
--> -2147483648|2
--> -3|30
--> 10|7
