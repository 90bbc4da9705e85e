CREATE TABLE p (id integer, name string, town string);
INSERT INTO p VALUES (1, 'Ann', 'Oslo');
INSERT INTO p VALUES (2, 'Bob', 'Rome');
INSERT INTO p VALUES (3, 'Cid', 'Oslo');
CREATE INDEX byid ON p (id);
CREATE INDEX bytown ON p (town, name);
SELECT name FROM p WHERE id = 2;
--> Bob
SELECT name FROM p WHERE town = 'Oslo';
--> Ann
--> Cid
-- Messages, in the order of the checks.
CREATE INDEX byid ON nosuch (id);
--! 42S02 Error: Table nosuch not found.
CREATE INDEX byid ON p (nosuch);
--! 42S11 Error: Index 'byid already exists.
CREATE INDEX other ON p (id, nosuch);
--! 42S22 Error: Column nosuch not found.
CREATE INDEX other ON p (ID);
--! 42S22 Error: Column ID not found.
CREATE INDEX a.b ON p (id);
--! 22023 Error: Invalid name a.b.
CREATE INDEX i ON _TABLES (x);
--! 42S02 Error: Table _TABLES not found.
-- Index names belong to their table.
CREATE TABLE q (id integer);
CREATE INDEX byid ON q (id);
COMMIT;
--reopen
CREATE INDEX byid ON p (name);
--! 42S11 Error: Index 'byid already exists.
SELECT name FROM p WHERE id = 3;
--> Cid
-- Indexes follow every change, also before COMMIT and after ROLLBACK.
UPDATE p SET id = 20 WHERE id = 2;
DELETE FROM p WHERE id = 1;
INSERT INTO p VALUES (4, 'Dan', 'Oslo');
SELECT id, name FROM p WHERE id = 2;
SELECT id, name FROM p WHERE id = 20;
--> 20|Bob
SELECT id, name FROM p WHERE id = 1;
SELECT id, name FROM p WHERE town = 'Oslo';
--> 3|Cid
--> 4|Dan
ROLLBACK;
SELECT id, name FROM p WHERE id = 2;
--> 2|Bob
SELECT id, name FROM p WHERE id = 20;
SELECT id, name FROM p WHERE town = 'Oslo';
--> 1|Ann
--> 3|Cid
UPDATE p SET id = 20 WHERE id = 2;
DELETE FROM p WHERE id = 1;
INSERT INTO p VALUES (4, 'Dan', 'Oslo');
COMMIT;
--reopen
SELECT id, name FROM p WHERE id = 2;
SELECT id, name FROM p WHERE id = 20;
--> 20|Bob
SELECT id, name FROM p WHERE town = 'Oslo' AND name > 'C';
--> 3|Cid
--> 4|Dan
-- Values that were left out read alike with and without an index.
INSERT INTO p (name) VALUES ('Eve');
COMMIT;
SELECT id, town FROM p WHERE name = 'Eve';
--> 0|
SELECT name FROM p WHERE id = 0;
--> Eve
--reopen
SELECT name FROM p WHERE id = 0 AND town = '';
--> Eve
-- A column goes with the indexes that have it; ROLLBACK brings all of them back.
ALTER TABLE p DROP town;
DROP INDEX p.bytown;
--! 42S12 Error: Index bytown not found.
SELECT name FROM p WHERE id = 3;
--> Cid
ROLLBACK;
SELECT name FROM p WHERE town = 'Rome';
--> Bob
DROP INDEX p.bytown;
DROP INDEX p.bytown;
--! 42S12 Error: Index bytown not found.
ROLLBACK;
DROP INDEX p.bytown;
COMMIT;
SELECT name FROM p WHERE town = 'Rome';
--> Bob
-- A renamed or retyped column stays indexed.
ALTER TABLE p RENAME id TO number;
SELECT name FROM p WHERE number = 20;
--> Bob
ALTER TABLE p MODIFY number string;
SELECT name FROM p WHERE number = '20';
--> Bob
DROP INDEX p.byid;
SELECT name FROM p WHERE number = '20';
--> Bob
COMMIT;
-- Row numbers can be indexed too, and columns more than once.
CREATE INDEX rows ON q (_rowid, id);
CREATE INDEX twice ON q (id, id);
INSERT INTO q VALUES (7);
INSERT INTO q VALUES (8);
SELECT _rowid, id FROM q WHERE _rowid = 2;
--> 2|8
SELECT _rowid, id FROM q WHERE id = 7;
--> 1|7
COMMIT;
--reopen
SELECT _rowid, id FROM q WHERE id = 8;
--> 2|8
-- DROP INDEX takes table.index.
DROP INDEX byid;
--! 07000 Error: Invalid index specifier (should be TABLE.INDEX).
DROP INDEX q.;
--! 07000 Error: Invalid index specifier (should be TABLE.INDEX).
DROP INDEX _;
--! 07000 Error: Invalid index specifier (should be TABLE.INDEX).
DROP INDEX _schema.byid;
--! 07000 Error: Can't drop schema indexes.
DROP INDEX _Schema.byid;
--! 07000 Error: Can't drop schema indexes.
DROP INDEX nosuch.byid;
--! 42S02 Error: Table nosuch not found.
DROP INDEX q.nosuch;
--! 42S12 Error: Index nosuch not found.
DROP INDEX q.by.id;
--! 42S12 Error: Index by.id not found.
DROP INDEX _TABLES.byid;
--! 42S02 Error: Table _TABLES not found.
DROP INDEX q.byid;
COMMIT;
SELECT id FROM q;
--> 7
--> 8
