CREATE TABLE t (a integer, b string);
INSERT INTO t VALUES (1, '10 apples');
INSERT INTO t VALUES (2, 'two');
COMMIT;

-- ADD: rows that are there read the type's empty value.
ALTER TABLE t ADD i integer;
ALTER TABLE t ADD COLUMN d double;
ALTER TABLE t ADD s varchar NOT NULL DEFAULT 'x';
ALTER TABLE t ADD y boolean;
ALTER TABLE t ADD day date;
ALTER TABLE t ADD x blob;
SELECT * FROM t;
--> 1|1|10 apples|0|0||FALSE||
--> 2|2|two|0|0||FALSE||
--= _rowid|a|b|i|d|s|y|day|x
--: Integer|Integer|String|Integer|Double|String|Boolean|Date|Binary
ALTER TABLE t ADD i string;
--! 42S21 Error: Column i already exists.
ALTER TABLE t ADD I string;
ALTER TABLE t ADD q money;
--! 22023 Error: Invalid type "money".
ALTER TABLE t ADD i money;
--! 42S21 Error: Column i already exists.
UPDATE t SET i = 5, s = 'new', day = '2020-1-2' WHERE a = 1;
-- The first row has grown, so COMMIT moves it to the end.
COMMIT;
SELECT i, s, day, I FROM t;
--> 0|||
--> 5|new|2020-01-02|

-- DROP: gone for good, also for a column of that name made later.
ALTER TABLE t DROP COLUMN y;
ALTER TABLE t DROP d RESTRICT;
ALTER TABLE t DROP x CASCADE;
ALTER TABLE t DROP I;
ALTER TABLE t DROP day;
SELECT * FROM t;
--> 2|2|two|0|
--> 1|1|10 apples|5|new
ALTER TABLE t DROP s;
ALTER TABLE t ADD s string;
SELECT * FROM t;
--> 2|2|two|0|
--> 1|1|10 apples|5|
ALTER TABLE t DROP nosuch;
--! 42S22 Error: Column nosuch not found.
ALTER TABLE t DROP _rowid;
--! 42S22 Error: Column _rowid not found.
COMMIT;
--reopen
SELECT * FROM t;
--> 2|2|two|0|
--> 1|1|10 apples|5|
SELECT ColumnID, ColumnName FROM _schema WHERE TableName = 't';
--> 1|a
--> 2|b
--> 3|i
--> 10|s

-- RENAME: the values stay with the column.
ALTER TABLE t RENAME b TO text;
ALTER TABLE t RENAME COLUMN i TO b;
SELECT * FROM t;
--> 2|2|two|0|
--> 1|1|10 apples|5|
--= _rowid|a|text|b|s
ALTER TABLE t RENAME nosuch TO x;
--! 42S22 Error: Column nosuch not found.
-- Nobody looks whether the new name is taken; the first column of a name is the one that is read,
-- the last one the one that is set.
ALTER TABLE t RENAME s TO a;
SELECT a FROM t;
--> 2
--> 1
UPDATE t SET a = 'last';
SELECT * FROM t;
--> 2|2|two|0|last
--> 1|1|10 apples|5|last
INSERT INTO t (a) VALUES (3);
SELECT * FROM t WHERE _rowid = 3;
--> 3|3|NULL|NULL|NULL
ROLLBACK;

-- MODIFY: stored values are read as the new type.
SELECT * FROM t;
--> 2|2|two|0|
--> 1|1|10 apples|5|
ALTER TABLE t MODIFY b integer;
ALTER TABLE t MODIFY COLUMN a string;
SELECT * FROM t;
--> 2|2|0|0|
--> 1|1|10|5|
--: Integer|String|Integer|Integer|String
SELECT a + 1, b + 1 FROM t;
--> 21|1
--> 11|11
ALTER TABLE t MODIFY b string;
SELECT b FROM t;
--> two
--> 10 apples
ALTER TABLE t MODIFY b nosuch;
--! 22023 Error: Invalid type "nosuch".
ALTER TABLE t MODIFY nosuch nosuch;
--! 42S22 Error: Column nosuch not found.
COMMIT;

-- The last column stays.
CREATE TABLE one (a integer, b integer);
ALTER TABLE one DROP a;
ALTER TABLE one DROP b;
--! 07000 Error: Can't drop the only column in a table.
ALTER TABLE one DROP a;
--! 42S22 Error: Column a not found.
SELECT * FROM one;

-- What can't be done.
ALTER TABLE t ALTER a SET 5;
--! 0A000 Error: Unsupported SQL feature.
ALTER TABLE t ALTER COLUMN a SET DEFAULT 5;
--! 0A000 Error: Unsupported SQL feature.
ALTER TABLE t ALTER nosuch DROP DEFAULT;
--! 0A000 Error: Unsupported SQL feature.
ALTER TABLE t RENAME TO u;
--! 0A000 Error: Unsupported SQL feature.
ALTER TABLE nosuch ADD a integer;
--! 42S02 Error: Table nosuch not found.
ALTER TABLE _schema ADD a integer;
--! 07000 Error: ALTER TABLE is invalid for the _schema table.  Nice try though.
ALTER TABLE _SCHEMA DROP TableName;
--! 07000 Error: ALTER TABLE is invalid for the _schema table.  Nice try though.
ALTER TABLE _TABLES ADD a integer;
--! 42S02 Error: Table _TABLES not found.

-- Row numbers go on after an alteration.
INSERT INTO t (a) VALUES (9);
DELETE FROM t WHERE a = '9';
COMMIT;
ALTER TABLE t ADD z integer;
INSERT INTO t (z) VALUES (1);
SELECT _rowid FROM t WHERE z = 1;
--> 4
COMMIT;

-- A column's number isn't used again, not even that of the last one.
CREATE TABLE again (a integer, b string);
INSERT INTO again VALUES (1, 'old');
COMMIT;
ALTER TABLE again DROP b;
ALTER TABLE again ADD b string;
SELECT * FROM again;
--> 1|1|
COMMIT;

-- A new name that is too long for its place moves the column's description, and with it, once it is read anew, the column.
CREATE TABLE moved (a integer, b string);
COMMIT;
ALTER TABLE moved RENAME a TO a_name_that_is_much_longer_than_the_one_before;
COMMIT;
SELECT * FROM moved;
--! 02000 No records found.
--= _rowid|a_name_that_is_much_longer_than_the_one_before|b
--reopen
SELECT * FROM moved;
--! 02000 No records found.
--= _rowid|b|a_name_that_is_much_longer_than_the_one_before

-- An index of an earlier type doesn't speak for the record: its entry has lost the apples.
CREATE TABLE eaten (a integer, s string);
INSERT INTO eaten VALUES (1, '12 apples');
COMMIT;
ALTER TABLE eaten MODIFY s integer;
CREATE INDEX i ON eaten (s);
SELECT s FROM eaten;
--> 12
ALTER TABLE eaten MODIFY s string;
SELECT s FROM eaten;
--> 12 apples
SELECT a FROM eaten WHERE s = '12';
SELECT a FROM eaten WHERE s = '12 apples';
--> 1
ALTER TABLE eaten MODIFY s integer;
SELECT a FROM eaten WHERE s = 12;
--> 1
COMMIT;
