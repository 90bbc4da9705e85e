-- What the parser made of each statement, printed again. None of them is run.

-- Select lists, names, literals.
SELECT 1,2 FROM TAB1,  TAB2;
--~ SELECT 1, 2 FROM TAB1, TAB2
SELECT 1,2;
--~ SELECT 1, 2
select all 1 from t;
--~ SELECT 1 FROM t
Select Distinct a From t;
--~ SELECT DISTINCT a FROM t
SELECT UNIQUE a FROM t;
--~ SELECT DISTINCT a FROM t
SELECT *, T.*, a.b.c FROM T;
--~
SELECT null, Default, #x, _y;
--~
SELECT 12abc, 1.5, 1e-5, 1E;
--~
SELECT 1E-5;
--~ SELECT (1E-5)
SELECT 'How''s it going?' FROM BAR;
--~
SELECT N'abc' FROM BAR;
--~ SELECT 'abc' FROM BAR
SELECT true, False, TRUE;
--~
SELECT café FROM t;
--~

-- Operators.
SELECT 1,39+3,2+4*10,-6*7 FROM MYTABLE;
--~ SELECT 1, (39+3), (2+(4*10)), (-(6)*7) FROM MYTABLE
SELECT 2+4*10, (2+4)*10 FROM MYTABLE;
--~ SELECT (2+(4*10)), ((2+4)*10) FROM MYTABLE
SELECT 1-2-3, 8/4/2;
--~ SELECT ((1-2)-3), ((8/4)/2)
SELECT 1-(2-3), (((1)));
--~ SELECT (1-(2-3)), 1
SELECT 2--3, 2*-3, +5, -(-5), -(+5);
--~ SELECT (2--(3)), (2*-(3)), 5, -(-(5)), -(5)
SELECT -a+b, -(a+b);
--~ SELECT (-(a)+b), -((a+b))
SELECT 2**;
--~ SELECT (2**)
SELECT a < b, a<=b, a <> b, a>b, a>= b, a =b;
--~ SELECT (a<b), (a<=b), (a<>b), (a>b), (a>=b), (a=b)
SELECT 1+2 < 3*4;
--~ SELECT ((1+2)<(3*4))
SELECT a OR b OR c, (a OR b) OR c;
--~ SELECT (a OR b OR c), ((a OR b) OR c)
SELECT a and b and c OR d AND e;
--~ SELECT ((a AND b AND c) OR (d AND e))
SELECT (a OR b) AND c;
--~ SELECT ((a OR b) AND c)
SELECT a=1 AND(b=2);
--~ SELECT ((a=1) AND (b=2))
SELECT NOT a=1, NOT (a=1 AND b), not a;
--~ SELECT (a=1), ((a=1) AND b), a
SELECT a OR NOT b AND NOT c;
--~ SELECT (a OR (b AND c))
SELECT -NOT;
--~ SELECT -(NOT)
-- No word is reserved.
SELECT a OR OR b;
--~ SELECT (a OR OR) AS b

-- LIKE.
SELECT foo FROM MYTABLE WHERE bar Not LIKE '%dat';
--~ SELECT foo FROM MYTABLE WHERE bar NOT LIKE '%dat'
SELECT foo FROM MYTABLE WHERE bar LIKE '%dat';
--~
SELECT a like b escape '^';
--~ SELECT a LIKE b ESCAPE '^'
SELECT a+b LIKE c+d ESCAPE e+f;
--~ SELECT (a+b) LIKE (c+d) ESCAPE (e+f)
SELECT a LIKE b AND c NOT LIKE d;
--~ SELECT (a LIKE b AND c NOT LIKE d)
SELECT NOT a LIKE b;
--~ SELECT a LIKE b
SELECT (a LIKE b) = c;
--~ SELECT (a LIKE b=c)
SELECT a NOT FROM t;
--~ SELECT a AS NOT FROM t
SELECT a NOT;
--~ SELECT a AS NOT

-- Functions.
SELECT Upper(42) from FOO;
--~ SELECT UPPER(42) FROM FOO
SELECT character_length('x'), char_length ('x'), bit_length(1), octet_length(1);
--~ SELECT CHAR_LENGTH('x'), CHAR_LENGTH('x'), BIT_LENGTH(1), OCTET_LENGTH(1)
SELECT lower(a), last_rowid('t');
--~ SELECT LOWER(a), LAST_ROWID('t')
SELECT current_date, Current_Time(), CURRENT_TIMESTAMP;
--~ SELECT CURRENT_DATE, CURRENT_TIME, CURRENT_TIMESTAMP
SELECT COUNT(*) FROM MYTABLE WHERE foo=42;
--~ SELECT COUNT(*) FROM MYTABLE WHERE (foo=42)
SELECT AVG(DISTINCT foo) FROM MYTABLE WHERE bar='baz';
--~ SELECT AVG(DISTINCT foo) FROM MYTABLE WHERE (bar='baz')
SELECT COUNT(ALL foo) FROM MYTABLE WHERE bar='baz';
--~ SELECT COUNT(foo) FROM MYTABLE WHERE (bar='baz')
SELECT sum(distinct(a)), max(a+1), min(all a), count( distinct a );
--~ SELECT SUM(DISTINCT a), MAX((a+1)), MIN(a), COUNT(DISTINCT a)
SELECT count, max FROM t;
--~ SELECT COUNT(*), MAX() FROM t
SELECT T.count FROM T;
--~
SELECT POSITION ('fu' IN 'snafu');
--~ SELECT POSITION('fu' IN 'snafu')
SELECT POSITION(a+b in c+d);
--~ SELECT POSITION((a+b) IN (c+d))
SELECT POSITION(POSITION('a' IN 'b') IN 'c');
--~ SELECT POSITION(POSITION('a' IN 'b') IN 'c')
SELECT SUBSTRING ('foobar' from 3 for 2);
--~ SELECT SUBSTRING('foobar' FROM 3 FOR 2)
SELECT SUBSTRING ('foobar' from 3);
--~ SELECT SUBSTRING('foobar' FROM 3)
SELECT SUBSTRING(a FROM(1)FOR(2));
--~ SELECT SUBSTRING(a FROM 1 FOR 2)
SELECT TRIM (' foo ');
--~ SELECT TRIM(' foo ')
SELECT TRIM ('?' from ' foo ');
--~ SELECT TRIM('?' FROM ' foo ')
SELECT TRIM (Leading from ' foo ');
--~ SELECT TRIM(LEADING FROM ' foo ')
SELECT TRIM (trailing from a);
--~ SELECT TRIM(TRAILING FROM a)
SELECT TRIM (BOTH '?' from ' foo ');
--~ SELECT TRIM(BOTH '?' FROM ' foo ')
SELECT TRIM((a)), TRIM((a) FROM b), TRIM(BOTH a FROM b);
--~ SELECT TRIM(a), TRIM(a FROM b), TRIM(BOTH a FROM b)

-- Aliases and tables.
SELECT foo AS bar FROM MYTABLE;
--~
SELECT 42 AS bar FROM MYTABLE;
--~
SELECT foo bar, 1+1 two FROM MYTABLE;
--~ SELECT foo AS bar, (1+1) AS two FROM MYTABLE
SELECT foo AS AS, 1 WHERE FROM t;
--~ SELECT foo AS AS, 1 AS WHERE FROM t
SELECT RV.foo FROM MYTABLE RV;
--~ SELECT RV.foo FROM MYTABLE AS RV
SELECT a FROM t AS x, u y, v;
--~ SELECT a FROM t AS x, u AS y, v
SELECT a FROM t AS WHERE WHERE b;
--~ SELECT a FROM t AS WHERE WHERE b
SELECT a FROM where where b;
--~ SELECT a FROM where WHERE b

-- Clauses.
SELECT foo, bar FROM MYTABLE WHERE foo=42;
--~ SELECT foo, bar FROM MYTABLE WHERE (foo=42)
SELECT foo FROM MYTABLE WHERE A=1 OR B=2 AND C=3;
--~ SELECT foo FROM MYTABLE WHERE ((A=1) OR ((B=2) AND (C=3)))
SELECT foo,bar FROM MYTABLE T ORDER BY foo,T.bar;
--~ SELECT foo, bar FROM MYTABLE AS T ORDER BY foo, T.bar
SELECT foo,bar FROM MYTABLE T ORDER BY foo ASC,bar DESC;
--~ SELECT foo, bar FROM MYTABLE AS T ORDER BY foo, bar DESC
SELECT pno, SUM(qty) FROM MYTABLE GROUP BY pno HAVING pno > 3;
--~ SELECT pno, SUM(qty) FROM MYTABLE GROUP BY pno HAVING (pno>3)
select a from t where b group by c,d having e order by f desc,g;
--~ SELECT a FROM t WHERE b GROUP BY c, d HAVING e ORDER BY f DESC, g
SELECT a FROM t HAVING b;
--~
SELECT a FROM t GROUP BY count ORDER BY max;
--~

-- INSERT, UPDATE, DELETE.
INSERT INTO foo (bar,baz,  bamf ) DEFAULT VALUES;
--~ INSERT INTO foo (bar, baz, bamf) DEFAULT VALUES
insert into foo default values;
--~ INSERT INTO foo DEFAULT VALUES
INSERT INTO foo (bar,baz,  bamf ) VALUES (1, DEFAULT, 42);
--~ INSERT INTO foo (bar, baz, bamf) VALUES (1, DEFAULT, 42)
INSERT INTO foo VALUES(-1,'a'+'b',DATE '1999-1-1');
--~ INSERT INTO foo VALUES (-(1), ('a'+'b'), DATE '1999-1-1')
INSERT INTO foo (bar, baz) SELECT one,2 FROM TABLE1;
--~ INSERT INTO foo (bar, baz) SELECT one, 2 FROM TABLE1
INSERT INTO foo select distinct * from foo where a ORDER BY b;
--~ INSERT INTO foo SELECT DISTINCT * FROM foo WHERE a ORDER BY b
UPDATE foo SET bar=2, baz=3;
--~
UPDATE foo SET bar=2, baz=3 WHERE this = that;
--~ UPDATE foo SET bar=2, baz=3 WHERE (this=that)
UPDATE foo SET when=DATE '1994-07-09';
--~
update foo set a = default , b=a;
--~ UPDATE foo SET a=default, b=a
UPDATE foo SET a=b=c;
--~ UPDATE foo SET a=(b=c)
DELETE FROM Foobar;
--~
DELETE FROM Foobar WHERE foo + 2 > bar;
--~ DELETE FROM Foobar WHERE ((foo+2)>bar)

-- Tables and indexes.
CREATE TABLE Foobar (one Integer, two String);
--~
create table t(a integer primary key,b text not null default 'x',c nosuchtype);
--~ CREATE TABLE t (a integer, b text DEFAULT 'x', c nosuchtype)
CREATE TABLE t (a double DEFAULT -1+2 NOT NULL PRIMARY KEY NOT NULL);
--~ CREATE TABLE t (a double DEFAULT (-(1)+2))
CREATE INDEX City on ZipCodes (City, State);
--~ CREATE INDEX City ON ZipCodes (City, State)
create index i ON t(a);
--~ CREATE INDEX i ON t (a)
ALTER TABLE Foobar ADD COLUMN foo Integer;
--~ ALTER TABLE Foobar ADD foo Integer
ALTER TABLE Foobar add foo Integer not null default 3;
--~ ALTER TABLE Foobar ADD foo Integer DEFAULT 3
ALTER TABLE Foobar DROP foo RESTRICT;
--~
ALTER TABLE Foobar DROP COLUMN foo CASCADE;
--~ ALTER TABLE Foobar DROP foo CASCADE
ALTER TABLE Foobar DROP foo;
--~
ALTER TABLE Foo RENAME TO Bar;
--~
ALTER TABLE Foo RENAME Bar TO Baz;
--~
ALTER TABLE Foo RENAME COLUMN Bar TO Baz;
--~ ALTER TABLE Foo RENAME Bar TO Baz
ALTER TABLE Foo MODIFY COLUMN Bar Integer;
--~ ALTER TABLE Foo MODIFY Bar Integer
ALTER TABLE Foo MODIFY Bar Integer;
--~
ALTER TABLE Foo ALTER COLUMN Bar DROP DEFAULT;
--~ ALTER TABLE Foo ALTER Bar DROP DEFAULT
ALTER TABLE Foo ALTER Bar SET 1+2;
--~ ALTER TABLE Foo ALTER Bar SET (1+2)
ALTER TABLE Foo ALTER Bar SET DEFAULT 5;
--~ ALTER TABLE Foo ALTER Bar SET 5
ALTER TABLE Foo ALTER Bar SET Default;
--~ ALTER TABLE Foo ALTER Bar SET Default
DROP TABLE foo RESTRICT;
--~
drop table foo cascade;
--~ DROP TABLE foo CASCADE
DROP TABLE foo;
--~
DROP INDEX ZipCodes.City;
--~
DROP INDEX nopoint;
--~

-- The rest.
commit and whatever " follows;
--~ COMMIT
Rollback;
--~ ROLLBACK
