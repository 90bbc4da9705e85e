-- What NULL does in tables, functions and aggregates.
CREATE TABLE n (a integer, d double, s string, b boolean, day date);

-- A column that is left out is null until COMMIT, and reads as its type's empty value from then on.
INSERT INTO n (a) VALUES (1);
INSERT INTO n (s) VALUES ('two');
SELECT * FROM n;
--> 1|1|NULL|NULL|NULL|NULL
--> 2|NULL|NULL|two|NULL|NULL
SELECT COUNT(*), COUNT(a), COUNT(s), COUNT(day) FROM n;
--> 2|1|1|0
COMMIT;
SELECT * FROM n;
--> 1|1|0||FALSE|
--> 2|0|0|two|FALSE|
SELECT COUNT(*), COUNT(a), COUNT(s), COUNT(day) FROM n;
--> 2|2|2|2
--reopen
SELECT * FROM n WHERE d = 0;
--> 1|1|0||FALSE|
--> 2|0|0|two|FALSE|

-- DEFAULT is that empty value at once.
INSERT INTO n VALUES (DEFAULT, DEFAULT, DEFAULT, DEFAULT, DEFAULT);
INSERT INTO n DEFAULT VALUES;
INSERT INTO n (a, s) VALUES (DEFAULT, 'x');
SELECT * FROM n WHERE _rowid > 2;
--> 3|0|0||FALSE|
--> 4|0|0||FALSE|
--> 5|0|NULL|x|NULL|NULL
COMMIT;
SELECT * FROM n WHERE _rowid > 2;
--> 3|0|0||FALSE|
--> 4|0|0||FALSE|
--> 5|0|0|x|FALSE|
UPDATE n SET a = 7, s = 'seven', b = TRUE, day = '1994-7-9', d = 1.5 WHERE _rowid = 3;
UPDATE n SET a = DEFAULT, s = default, b = Default, day = DEFAULT WHERE _rowid = 3;
SELECT * FROM n WHERE _rowid = 3;
--> 3|0|1.5||FALSE|
COMMIT;

-- A NULL that is written becomes a value.
UPDATE n SET a = NULL, d = NULL, s = NULL, b = NULL, day = NULL WHERE _rowid = 4;
SELECT * FROM n WHERE _rowid = 4;
--> 4|0|0|NULL|TRUE|0000-00-00
COMMIT;
SELECT * FROM n WHERE _rowid = 4;
--> 4|0|0|NULL|TRUE|0000-00-00

-- Functions see the text NULL; aggregates pass it over.
SELECT UPPER(NULL), CHAR_LENGTH(NULL), POSITION('L' IN NULL), OCTET_LENGTH(NULL), BIT_LENGTH(NULL);
--> NULL|4|3|NULL|NULL
SELECT SUBSTRING('abc' FROM NULL), SUBSTRING('abc' FROM 2 FOR NULL), TRIM((NULL) FROM ' x');
--> abc|bc|x
SELECT NULL LIKE 'N%', 'NULL' LIKE NULL, NULL NOT LIKE 'NULL';
--> 1|1|0
SELECT COUNT(NULL), SUM(NULL), MIN(NULL), MAX(NULL), AVG(NULL) FROM n;
--> 0|NULL|NULL|NULL|NULL

-- Names that NULL is not.
SELECT null, Null, T.NULL FROM n T;
--! 42S22 Error: Column T.NULL not found.
