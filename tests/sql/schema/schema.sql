-- The schema describes itself first.
SELECT * FROM _schema;
--> 1|_schema|1|TableName|5|0|1|
--> 2|_schema|2|ColumnID|3|0|1|
--> 3|_schema|3|ColumnName|5|0|1|
--> 4|_schema|4|TypeCode|3|0|1|
--> 5|_schema|5|Length|3|0|1|
--> 6|_schema|6|NotNull|3|0|1|
--> 7|_schema|7|DefaultValue|5|0|1|
--= _rowid|TableName|ColumnID|ColumnName|TypeCode|Length|NotNull|DefaultValue
--: Integer|String|Integer|String|Integer|Integer|Integer|String
SELECT UNIQUE TableName FROM _schema WHERE TableName <> '_schema';

-- Every type name, in any case, and what it is kept as.
CREATE TABLE types (a integer, b STRING, c Text, d varchar, e Boolean, f date, g TIME, h timestamp, i double, j Float, k binary, l blob);
SELECT ColumnID, ColumnName, TypeCode, Length, NotNull, DefaultValue FROM _schema WHERE TableName = 'types';
--> 1|a|3|0|1|
--> 2|b|5|0|1|
--> 3|c|5|0|1|
--> 4|d|5|0|1|
--> 5|e|12|0|1|
--> 6|f|8|0|1|
--> 7|g|9|0|1|
--> 8|h|10|0|1|
--> 9|i|7|0|1|
--> 10|j|7|0|1|
--> 11|k|14|0|1|
--> 12|l|14|0|1|
SELECT * FROM types;
--! 02000 No records found.
--: Integer|Integer|String|String|String|Boolean|Date|Time|Timestamp|Double|Double|Binary|Binary
CREATE TABLE other (x integer PRIMARY KEY, y string DEFAULT 'd' NOT NULL);
SELECT ColumnName, NotNull, DefaultValue FROM _schema WHERE TableName = 'other';
--> x|1|
--> y|1|
COMMIT;
--reopen
SELECT UNIQUE TableName FROM _schema WHERE TableName <> '_schema';
--> types
--> other
SELECT TableName, COUNT(*) FROM _schema GROUP BY TableName;
--> _schema|7
--> other|2
--> types|12

-- Names are exact; the schema's own name is known in any case where it is refused.
SELECT * FROM Types;
--! 42S02 Error: Table Types not found.
SELECT * FROM _SCHEMA;
--! 42S02 Error: Table _SCHEMA not found.
CREATE TABLE types (a integer);
--! 42S01 Error: Table types already exists.
CREATE TABLE _schema (a integer);
--! 42S01 Error: Table _schema already exists.
CREATE TABLE Types (a integer);
SELECT * FROM Types;
DROP TABLE Types;
DROP TABLE _schema;
--! 07000 Error: Can't drop the schema table (nice try!).
DROP TABLE _Schema CASCADE;
--! 07000 Error: Can't drop the schema table (nice try!).
DROP TABLE nosuch;
--! 42S02 Error: Table nosuch not found.
DROP TABLE _TABLES;
--! 42S02 Error: Table _TABLES not found.

-- A type that is not there leaves nothing behind, in whichever column it is.
CREATE TABLE bad (a integer, b string, c money);
--! 22023 Error: Invalid type "money".
CREATE TABLE bad (a int, b money);
--! 22023 Error: Invalid type "int".
SELECT COUNT(*) FROM _schema WHERE TableName = 'bad';
--> 0
SELECT * FROM bad;
--! 42S02 Error: Table bad not found.

-- Names that can't be part of a file's name or would be read as qualified ones.
CREATE TABLE a.b (a integer);
--! 22023 Error: Invalid name a.b.
CREATE TABLE ab (c.d integer);
--! 22023 Error: Invalid name c.d.
CREATE TABLE ab (a integer, b. integer);
--! 22023 Error: Invalid name b..
ALTER TABLE other ADD c.d integer;
--! 22023 Error: Invalid name c.d.
ALTER TABLE other RENAME x TO c.d;
--! 22023 Error: Invalid name c.d.
CREATE INDEX c.d ON other (x);
--! 22023 Error: Invalid name c.d.
SELECT COUNT(*) FROM _schema WHERE TableName = 'ab' OR ColumnName LIKE '%.%';
--> 0
-- Any other byte of a word will do.
CREATE TABLE Straße (Größe integer, its~1 string, a!b double);
INSERT INTO Straße VALUES (1, 'x', 2.5);
SELECT Größe, its~1, a!b, Straße.Größe FROM Straße;
--> 1|x|2.5|1
COMMIT;
--reopen
SELECT * FROM Straße;
--> 1|1|x|2.5
--= _rowid|Größe|its~1|a!b

-- Columns of one name: nobody looks. The first one is read.
CREATE TABLE twice (a integer, a string);
INSERT INTO twice VALUES (1, 'x');
SELECT a, * FROM twice;
--> 1|1|1|x

-- _TABLES is there whether a table has that name or not.
SELECT * FROM _TABLES;
--> _TABLES
SELECT COUNT(*), 5 FROM _TABLES T;
--> 1|5
SELECT T.* FROM _TABLES T, other;
SELECT a FROM _TABLES;
--! 42S22 Error: Column a not found.
INSERT INTO _TABLES VALUES ('x');
--! 42S02 Error: Table _TABLES not found.
UPDATE _TABLES SET a = 1;
--! 42S02 Error: Table _TABLES not found.
DELETE FROM _TABLES;
--! 42S02 Error: Table _TABLES not found.
SELECT * FROM _tables;
--! 42S02 Error: Table _tables not found.
CREATE TABLE _TABLES (a integer);
INSERT INTO _TABLES VALUES (5);
SELECT * FROM _TABLES;
--> 1|5
ROLLBACK;
SELECT * FROM _TABLES;
--> _TABLES

-- A default is what its text reads as in the column's type; dates keep it as it is. A type that is none has NULLs.
CREATE TABLE defaults (i integer, j integer, b boolean, c boolean, x double, s string, day date, stamp timestamp, bin binary, none integer);
UPDATE _schema SET DefaultValue = '4x' WHERE TableName = 'defaults' AND ColumnName = 'i';
UPDATE _schema SET DefaultValue = '-3' WHERE TableName = 'defaults' AND ColumnName = 'b';
UPDATE _schema SET DefaultValue = 'TRUE' WHERE TableName = 'defaults' AND ColumnName = 'c';
UPDATE _schema SET DefaultValue = '2.5' WHERE TableName = 'defaults' AND ColumnName = 'x';
UPDATE _schema SET DefaultValue = 'abc' WHERE TableName = 'defaults' AND ColumnName = 's';
UPDATE _schema SET DefaultValue = '1984-5-6' WHERE TableName = 'defaults' AND ColumnName = 'day';
UPDATE _schema SET DefaultValue = 'x' WHERE TableName = 'defaults' AND ColumnName = 'stamp';
UPDATE _schema SET DefaultValue = 'b' WHERE TableName = 'defaults' AND ColumnName = 'bin';
UPDATE _schema SET TypeCode = 4 WHERE TableName = 'defaults' AND ColumnName = 'none';
COMMIT;
--reopen
INSERT INTO defaults (_rowid) VALUES (7);
COMMIT;
SELECT * FROM defaults;
--# Integer 7|Integer 4|Integer 0|Boolean TRUE|Boolean FALSE|Double 2.5|String abc|Date 1984-5-6|Timestamp x|Binary b|NULL None
