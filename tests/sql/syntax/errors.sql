-- Statements that don't parse: the byte where the parser stood, and why.

EXPLAIN SELECT 1;
--^ 0 SQL Error: keyword expected
SELECTED 1;
--^ 0 SQL Error: keyword expected
42;
--^ 0 SQL Error: keyword expected
'SELECT';
--^ 0 SQL Error: keyword expected
(SELECT 1);
--^ 0 SQL Error: keyword expected
?;
--^ 0 SQL Error: keyword expected
CREATE ;
--^ 7 SQL Error: keyword expected
CREATE VIEW v;
--^ 7 SQL Error: keyword expected
CREATE UNIQUE INDEX i ON t (a);
--^ 7 SQL Error: keyword expected
CREATE 'TABLE' t (a integer);
--^ 7 SQL Error: keyword expected
ALTER INDEX i;
--^ 6 SQL Error: keyword expected
ALTER ;
--^ 6 SQL Error: keyword expected
DROP ;
--^ 5 SQL Error: keyword expected
DROP VIEW v;
--^ 5 SQL Error: keyword expected
SET ;
--^ 4 SQL Error: keyword expected
SET OPTION 1;
--^ 4 SQL Error: keyword expected
SET 'ESCAPE' 1;
--^ 4 SQL Error: keyword expected
SELECT a FROM t x y;
--^ 18 SQL Error: keyword expected
SELECT a FROM t );
--^ 16 SQL Error: keyword expected
SELECT a FROM t 42;
--^ 16 SQL Error: keyword expected
SELECT a FROM t !;
--^ 16 SQL Error: keyword expected
SELECT a FROM t WHERE b = 1 c;
--^ 28 SQL Error: keyword expected
SELECT a FROM t WHERE b = 1 = 2;
--^ 28 SQL Error: keyword expected
SELECT a FROM t WHERE b IS NULL;
--^ 24 SQL Error: keyword expected
SELECT a FROM t WHERE b BETWEEN 1 AND 2;
--^ 24 SQL Error: keyword expected
SELECT a FROM t WHERE b NOT IN (1);
--^ 24 SQL Error: keyword expected
SELECT a FROM t WHERE b NOT;
--^ 24 SQL Error: keyword expected
SELECT a FROM t WHERE NOT NOT b;
--^ 30 SQL Error: keyword expected
SELECT a FROM t GROUP a;
--^ 22 SQL Error: keyword expected
SELECT a FROM t GROUP BY a b;
--^ 27 SQL Error: keyword expected
SELECT a FROM t GROUP BY a WHERE b;
--^ 27 SQL Error: keyword expected
SELECT a FROM t ORDER ;
--^ 22 SQL Error: keyword expected
SELECT a FROM t ORDER BY a DESC ASC;
--^ 32 SQL Error: keyword expected
SELECT a FROM t ORDER BY a HAVING b;
--^ 27 SQL Error: keyword expected
SELECT a FROM t WHERE b WHERE c;
--^ 24 SQL Error: keyword expected
SELECT a FROM t UNION SELECT b FROM u WHERE c;
--^ 22 SQL Error: keyword expected
SELECT a FROM t x JOIN u;
--^ 18 SQL Error: keyword expected
INSERT INTO t VALUES (1) (2);
--^ 25 SQL Error: keyword expected
INSERT INTO t VALUES (1) , (2);
--^ 25 SQL Error: keyword expected
INSERT INTO t DEFAULT VALUES 1;
--^ 29 SQL Error: keyword expected
INSERT INTO t SELECT a FROM u v w;
--^ 32 SQL Error: keyword expected
UPDATE t SET a=1 b=2;
--^ 17 SQL Error: keyword expected
UPDATE t SET a=1 WHERE b c;
--^ 25 SQL Error: keyword expected
DELETE FROM t x;
--^ 14 SQL Error: keyword expected
DELETE FROM t 42;
--^ 14 SQL Error: keyword expected
DELETE FROM t WHERE a b;
--^ 22 SQL Error: keyword expected
CREATE TABLE t (a integer) x;
--^ 27 SQL Error: keyword expected
CREATE TABLE t (a integer PRIMARY );
--^ 34 SQL Error: keyword expected
CREATE TABLE t (a integer NOT ZERO);
--^ 30 SQL Error: keyword expected
CREATE INDEX i t (a);
--^ 15 SQL Error: keyword expected
CREATE INDEX i ON t (a) x;
--^ 24 SQL Error: keyword expected
ALTER TABLE Foo;
--^ 15 SQL Error: keyword expected
ALTER TABLE Foo CHANGE a;
--^ 16 SQL Error: keyword expected
ALTER TABLE Foo 42;
--^ 16 SQL Error: keyword expected
ALTER TABLE Foo ADD a integer , b integer;
--^ 30 SQL Error: keyword expected
ALTER TABLE Foo DROP a NOW;
--^ 23 SQL Error: keyword expected
ALTER TABLE Foo RENAME a b;
--^ 25 SQL Error: keyword expected
ALTER TABLE Foo RENAME COLUMN TO b;
--^ 33 SQL Error: keyword expected
ALTER TABLE Foo ALTER a ;
--^ 24 SQL Error: keyword expected
ALTER TABLE Foo ALTER a DROP NOT;
--^ 29 SQL Error: keyword expected
ALTER TABLE Foo ALTER a DROP DEFAULT x;
--^ 37 SQL Error: keyword expected
DROP TABLE t RESTRICT CASCADE;
--^ 22 SQL Error: keyword expected
DROP INDEX t.i x;
--^ 15 SQL Error: keyword expected
SELECT POSITION('a' , 'b');
--^ 20 SQL Error: keyword expected
SELECT POSITION('a');
--^ 19 SQL Error: keyword expected
SELECT SUBSTRING('a' , 1);
--^ 21 SQL Error: keyword expected
SELECT SUBSTRING('a' FROM 1 , 2);
--^ 28 SQL Error: keyword expected
SELECT SUBSTRING('a' FROM 1;
--^ 27 SQL Error: keyword expected
SELECT TRIM(a);
--^ 12 SQL Error: keyword expected
SELECT TRIM(UPPER('a'));
--^ 12 SQL Error: keyword expected
SELECT TRIM(FROM 'a');
--^ 12 SQL Error: keyword expected
SELECT TRIM('a' 'b');
--^ 16 SQL Error: keyword expected
SELECT TRIM(LEADING 'a');
--^ 23 SQL Error: keyword expected
SELECT SUBSTRING('a' FROM FOR 2);
--^ 30 SQL Error: keyword expected

SELECT a FROM t WHERE b < > 1;
--^ 26 SQL Syntax Error
SELECT a = FROM t;
--^ 11 SQL Syntax Error
SELECT FROM FOO;
--^ 7 SQL Syntax Error
SELECT;
--^ 6 SQL Syntax Error
SELECT a, FROM FOO;
--^ 10 SQL Syntax Error
SELECT , a;
--^ 7 SQL Syntax Error
SELECT --5;
--^ 8 SQL Syntax Error
SELECT +-5;
--^ 8 SQL Syntax Error
SELECT 2 + - - 3;
--^ 13 SQL Syntax Error
SELECT 1 + ;
--^ 11 SQL Syntax Error
SELECT % 2;
--^ 7 SQL Syntax Error
SELECT .5;
--^ 7 SQL Syntax Error
SELECT !;
--^ 7 SQL Syntax Error
SELECT ();
--^ 8 SQL Syntax Error
SELECT a AND ;
--^ 13 SQL Syntax Error
SELECT NOT ;
--^ 11 SQL Syntax Error
SELECT a LIKE ;
--^ 14 SQL Syntax Error
SELECT a LIKE b ESCAPE ;
--^ 23 SQL Syntax Error
SELECT "a" FROM t;
--^ 7 SQL Syntax Error
SELECT a FROM t WHERE a="b";
--^ 24 SQL Syntax Error
SELECT 'abc'x;
--^ 7 SQL Syntax Error
SELECT 'abc'.x;
--^ 7 SQL Syntax Error
SELECT UPPER();
--^ 13 SQL Syntax Error
SELECT UPPER(, 1);
--^ 13 SQL Syntax Error
SELECT COUNT();
--^ 13 SQL Syntax Error
SELECT COUNT(DISTINCT );
--^ 22 SQL Syntax Error
SELECT TRIM();
--^ 12 SQL Syntax Error
UPDATE t SET a=/;
--^ 15 SQL Syntax Error
SELECT a FROM t WHERE ;
--^ 22 SQL Syntax Error
SELECT a FROM t HAVING ;
--^ 23 SQL Syntax Error
DELETE FROM t WHERE ;
--^ 20 SQL Syntax Error
INSERT INTO t VALUES ();
--^ 22 SQL Syntax Error
INSERT INTO t VALUES (1,);
--^ 24 SQL Syntax Error
CREATE TABLE t (a integer DEFAULT);
--^ 33 SQL Syntax Error
ALTER TABLE t ALTER a SET;
--^ 25 SQL Syntax Error
SELECT FROM "x" WHERE (;
--^ 7 SQL Syntax Error

SELECT TRIM(BOTH 'a' IN 'b');
--^ 21 SQL Error: feature not supported
SELECT a FROM t WHERE b IN (1,2);
--^ 24 SQL Error: feature not supported
SELECT a IN (1) FROM t;
--^ 9 SQL Error: feature not supported
SELECT UPPER(a IN b);
--^ 15 SQL Error: feature not supported
SELECT POSITION('a' IN 'b' IN 'c');
--^ 27 SQL Error: feature not supported
DELETE FROM t WHERE a=1 in (1);
--^ 24 SQL Error: feature not supported

SELECT 1,2 FROM 42;
--^ 16 SQL Error: table name expected
SELECT 1 FROM ;
--^ 14 SQL Error: table name expected
SELECT 1 FROM t, ;
--^ 17 SQL Error: table name expected
SELECT 1 FROM (SELECT 2);
--^ 14 SQL Error: table name expected
INSERT INTO ;
--^ 12 SQL Error: table name expected
INSERT INTO 't' VALUES (1);
--^ 12 SQL Error: table name expected
UPDATE ;
--^ 7 SQL Error: table name expected
UPDATE 1 SET a=1;
--^ 7 SQL Error: table name expected
DELETE FROM ;
--^ 12 SQL Error: table name expected
DELETE FROM 't';
--^ 12 SQL Error: table name expected
CREATE TABLE ;
--^ 13 SQL Error: table name expected
CREATE TABLE (a integer);
--^ 13 SQL Error: table name expected
CREATE INDEX i ON (a);
--^ 18 SQL Error: table name expected
ALTER TABLE ;
--^ 12 SQL Error: table name expected
ALTER TABLE t RENAME TO ;
--^ 24 SQL Error: table name expected
DROP TABLE;
--^ 10 SQL Error: table name expected
DROP TABLE 't';
--^ 11 SQL Error: table name expected
DROP INDEX ;
--^ 11 SQL Error: table name expected
DROP INDEX .i;
--^ 11 SQL Error: table name expected

-- "*" is a name here, so 3 stands where an alias may.
SELECT 2**3;
--^ 10 SQL Error: range variable expected
SELECT 1,2 FROM FOO AS +;
--^ 23 SQL Error: range variable expected
SELECT 1 FROM FOO AS ;
--^ 21 SQL Error: range variable expected
SELECT 1 FROM FOO AS , BAR;
--^ 21 SQL Error: range variable expected
SELECT a AS FROM t;
--^ 12 SQL Error: range variable expected
SELECT a AS ;
--^ 12 SQL Error: range variable expected
SELECT a AS , b;
--^ 12 SQL Error: range variable expected
SELECT a AS 'b' FROM t;
--^ 12 SQL Error: range variable expected
SELECT a 'b' FROM t;
--^ 9 SQL Error: range variable expected
SELECT a ) FROM t;
--^ 9 SQL Error: range variable expected
SELECT 1 2;
--^ 9 SQL Error: range variable expected
SELECT a = b = c;
--^ 13 SQL Error: range variable expected
SELECT 1 % 2;
--^ 9 SQL Error: range variable expected

CREATE INDEX ;
--^ 13 SQL Error: index name expected
CREATE INDEX (a);
--^ 13 SQL Error: index name expected

SELECT a FROM t GROUP BY 1;
--^ 25 SQL Error: column name expected
SELECT a FROM t GROUP BY a, ;
--^ 28 SQL Error: column name expected
SELECT a FROM t GROUP BY (a);
--^ 25 SQL Error: column name expected
SELECT a FROM t ORDER BY 1;
--^ 25 SQL Error: column name expected
SELECT a FROM t ORDER BY ;
--^ 25 SQL Error: column name expected
SELECT a FROM t ORDER BY a, -b;
--^ 28 SQL Error: column name expected
INSERT INTO t () VALUES (1);
--^ 15 SQL Error: column name expected
INSERT INTO t (a, 1) VALUES (1);
--^ 18 SQL Error: column name expected
INSERT INTO t (;
--^ 15 SQL Error: column name expected
UPDATE t SET ;
--^ 13 SQL Error: column name expected
UPDATE t SET 1=2;
--^ 13 SQL Error: column name expected
UPDATE t SET a=1, ;
--^ 18 SQL Error: column name expected
CREATE TABLE t ();
--^ 16 SQL Error: column name expected
CREATE TABLE t (a integer, );
--^ 27 SQL Error: column name expected
CREATE INDEX i ON t ();
--^ 21 SQL Error: column name expected
CREATE INDEX i ON t (a, 1);
--^ 24 SQL Error: column name expected
ALTER TABLE t ADD ;
--^ 18 SQL Error: column name expected
ALTER TABLE t DROP ;
--^ 19 SQL Error: column name expected
ALTER TABLE t DROP COLUMN 1;
--^ 26 SQL Error: column name expected
ALTER TABLE t RENAME ;
--^ 21 SQL Error: column name expected
ALTER TABLE t RENAME a TO ;
--^ 26 SQL Error: column name expected
ALTER TABLE t ALTER ;
--^ 20 SQL Error: column name expected
ALTER TABLE t MODIFY COLUMN ;
--^ 28 SQL Error: column name expected

CREATE TABLE t (a);
--^ 17 SQL Error: data type expected
CREATE TABLE t (a 'integer');
--^ 18 SQL Error: data type expected
CREATE TABLE t (a;
--^ 17 SQL Error: data type expected
ALTER TABLE t ADD COLUMN integer;
--^ 32 SQL Error: data type expected
ALTER TABLE t MODIFY a 1;
--^ 23 SQL Error: data type expected
CREATE TABLE t (a, b integer;
--^ 17 SQL Error: data type expected

SELECT 1 x WHERE a;
--^ 11 SQL Error: FROM expected
SELECT a b c FROM t;
--^ 11 SQL Error: FROM expected
SELECT a LIKE b c d;
--^ 18 SQL Error: FROM expected
DELETE ;
--^ 7 SQL Error: FROM expected
DELETE t;
--^ 7 SQL Error: FROM expected
DELETE 'FROM' t;
--^ 7 SQL Error: FROM expected

INSERT ;
--^ 7 SQL Error: INTO expected
INSERT t VALUES (1);
--^ 7 SQL Error: INTO expected
INSERT 'INTO' t;
--^ 7 SQL Error: INTO expected

UPDATE foo;
--^ 10 SQL Error: SET expected
UPDATE foo a=1;
--^ 11 SQL Error: SET expected
UPDATE foo (a) SET a=1;
--^ 11 SQL Error: SET expected

INSERT INTO t;
--^ 13 SQL Error: keyword values expected
INSERT INTO t (a);
--^ 17 SQL Error: keyword values expected
INSERT INTO t (a) (1);
--^ 18 SQL Error: keyword values expected
INSERT INTO t SET a=1;
--^ 14 SQL Error: keyword values expected
INSERT INTO t (a) (SELECT b FROM u);
--^ 18 SQL Error: keyword values expected
INSERT INTO t DEFAULT;
--^ 21 SQL Error: keyword values expected
INSERT INTO t DEFAULT VALUE;
--^ 22 SQL Error: keyword values expected

INSERT INTO t VALUES 1;
--^ 21 SQL Error: parenthesis expected
INSERT INTO t VALUES;
--^ 20 SQL Error: parenthesis expected
CREATE TABLE t;
--^ 14 SQL Error: parenthesis expected
CREATE TABLE t a integer;
--^ 15 SQL Error: parenthesis expected
CREATE INDEX i ON t;
--^ 19 SQL Error: parenthesis expected
CREATE INDEX i ON t a;
--^ 20 SQL Error: parenthesis expected

INSERT INTO t (a b) VALUES (1);
--^ 17 SQL Error: comma or parenthesis expected
INSERT INTO t (a;
--^ 16 SQL Error: comma or parenthesis expected
INSERT INTO t VALUES (1 2);
--^ 24 SQL Error: comma or parenthesis expected
INSERT INTO t VALUES (1;
--^ 23 SQL Error: comma or parenthesis expected
CREATE TABLE t (a integer b integer);
--^ 26 SQL Error: comma or parenthesis expected
CREATE TABLE t (a varchar(20));
--^ 25 SQL Error: comma or parenthesis expected
CREATE TABLE t (a integer;
--^ 25 SQL Error: comma or parenthesis expected
CREATE TABLE t (a integer UNIQUE);
--^ 26 SQL Error: comma or parenthesis expected
CREATE INDEX i ON t (a b);
--^ 23 SQL Error: comma or parenthesis expected
CREATE INDEX i ON t (a DESC);
--^ 23 SQL Error: comma or parenthesis expected
CREATE INDEX i ON t (a;
--^ 22 SQL Error: comma or parenthesis expected

UPDATE t SET a;
--^ 14 SQL Error: equals sign expected
UPDATE t SET a 1;
--^ 15 SQL Error: equals sign expected
UPDATE t SET a <> 1;
--^ 15 SQL Error: equals sign expected
UPDATE t SET a, b=1;
--^ 14 SQL Error: equals sign expected

UPDATE t SET a=;
--^ 15 SQL Error: assignment value expected
UPDATE t SET a= , b=1;
--^ 16 SQL Error: assignment value expected
UPDATE t SET a= WHERE b=1;
--^ 16 SQL Error: assignment value expected

SELECT (1;
--^ 9 SQL Error: unbalanced parentheses
SELECT (1 2);
--^ 10 SQL Error: unbalanced parentheses
SELECT ((1);
--^ 11 SQL Error: unbalanced parentheses
SELECT (1, 2);
--^ 9 SQL Error: unbalanced parentheses
SELECT (SELECT 1);
--^ 15 SQL Error: unbalanced parentheses
SELECT UPPER('a';
--^ 16 SQL Error: unbalanced parentheses
SELECT UPPER('a', 'b');
--^ 16 SQL Error: unbalanced parentheses
SELECT COUNT(*, a);
--^ 14 SQL Error: unbalanced parentheses
SELECT COUNT(* + 1);
--^ 15 SQL Error: unbalanced parentheses
SELECT CURRENT_DATE(1);
--^ 20 SQL Error: unbalanced parentheses
SELECT POSITION('a' IN 'b', 1);
--^ 26 SQL Error: unbalanced parentheses
SELECT SUBSTRING('a' FROM 1 FOR 2 3);
--^ 34 SQL Error: unbalanced parentheses
SELECT TRIM('a' FROM 'b', 'c');
--^ 24 SQL Error: unbalanced parentheses
SELECT POSITION((a IN b) IN c);
--^ 19 SQL Error: unbalanced parentheses
SELECT (1 2, FOO(1);
--^ 10 SQL Error: unbalanced parentheses

SELECT DATE;
--^ 11 SQL Error: datetime literal incomplete
SELECT DATE FROM t;
--^ 12 SQL Error: datetime literal incomplete
SELECT time + 1;
--^ 12 SQL Error: datetime literal incomplete
SELECT TIMESTAMP 19940709;
--^ 17 SQL Error: datetime literal incomplete
SELECT DATE ('1994-07-09');
--^ 12 SQL Error: datetime literal incomplete
UPDATE t SET a = DATE;
--^ 21 SQL Error: datetime literal incomplete

SELECT FOO(1);
--^ 7 SQL Error: unknown function
SELECT 1 + abs (a) FROM t;
--^ 11 SQL Error: unknown function
SELECT a FROM t WHERE EXISTS (SELECT 1);
--^ 22 SQL Error: unknown function
INSERT INTO t VALUES (NOW());
--^ 22 SQL Error: unknown function
SELECT UPPER(LOWERCASE('a'));
--^ 13 SQL Error: unknown function
