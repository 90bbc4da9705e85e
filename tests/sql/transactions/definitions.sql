-- Tables and indexes made, altered and dropped are part of the transaction.
CREATE TABLE keep (a integer);
INSERT INTO keep VALUES (1);
COMMIT;
CREATE TABLE gone (a integer);
INSERT INTO gone VALUES (1);
CREATE INDEX i ON keep (a);
ALTER TABLE keep ADD b string;
UPDATE keep SET b = 'x';
ROLLBACK;
SELECT * FROM gone;
--! 42S02 Error: Table gone not found.
SELECT * FROM keep;
--> 1|1
DROP INDEX keep.i;
--! 42S12 Error: Index i not found.
SELECT COUNT(*) FROM _schema WHERE TableName <> '_schema';
--> 1

-- Drop and bring back.
CREATE INDEX i ON keep (a);
COMMIT;
DROP TABLE keep;
SELECT * FROM keep;
--! 42S02 Error: Table keep not found.
INSERT INTO keep VALUES (2);
--! 42S02 Error: Table keep not found.
SELECT COUNT(*) FROM _schema WHERE TableName = 'keep';
--> 0
ROLLBACK;
SELECT * FROM keep;
--> 1|1
DROP INDEX keep.i;
ROLLBACK;
DROP INDEX keep.i;
COMMIT;
DROP INDEX keep.i;
--! 42S12 Error: Index i not found.

-- Drop and make anew in one transaction: a new, empty table.
DROP TABLE keep;
CREATE TABLE keep (x string, y integer);
SELECT * FROM keep;
INSERT INTO keep VALUES ('new', 1);
SELECT * FROM keep;
--> 1|new|1
ROLLBACK;
SELECT * FROM keep;
--> 1|1
--= _rowid|a
DROP TABLE keep;
CREATE TABLE keep (x string, y integer);
INSERT INTO keep VALUES ('new', 1);
COMMIT;
SELECT * FROM keep;
--> 1|new|1
--= _rowid|x|y
--reopen
SELECT * FROM keep;
--> 1|new|1
DROP TABLE keep;
COMMIT;
--reopen
SELECT * FROM keep;
--! 42S02 Error: Table keep not found.
CREATE TABLE keep (z integer);
SELECT * FROM keep;
COMMIT;
SELECT COUNT(*) FROM keep;
--> 0

-- A table with changes can't be altered or dropped.
INSERT INTO keep VALUES (1);
ALTER TABLE keep ADD b integer;
--! 25000 Error: Table keep has a transaction in progress.
ALTER TABLE keep RENAME TO other;
--! 25000 Error: Table keep has a transaction in progress.
DROP TABLE keep;
--! 25000 Error: Table keep has a transaction in progress.
COMMIT;
DELETE FROM keep;
DROP TABLE keep CASCADE;
--! 25000 Error: Table keep has a transaction in progress.
ROLLBACK;
UPDATE keep SET z = 2;
DROP TABLE keep;
--! 25000 Error: Table keep has a transaction in progress.
ROLLBACK;
SELECT * FROM keep;
--> 1|1
-- Others are not in the way, and an update that finds no row is no change.
CREATE TABLE other (a integer);
INSERT INTO other VALUES (1);
UPDATE keep SET z = 3 WHERE z = 99;
DELETE FROM keep WHERE z = 99;
DROP TABLE keep;
ROLLBACK;
SELECT COUNT(*) FROM keep;
--> 1

-- Several alterations of one table in one transaction, undone together.
ALTER TABLE keep ADD s string;
ALTER TABLE keep RENAME z TO zz;
ALTER TABLE keep ADD d double;
ALTER TABLE keep DROP s;
SELECT * FROM keep;
--> 1|1|0
--= _rowid|zz|d
ROLLBACK;
SELECT * FROM keep;
--> 1|1
--= _rowid|z
