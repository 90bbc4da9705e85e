-- Columns are found by their exact names, tables and their other names in any letter case.
CREATE TABLE one (a integer, b string);
CREATE TABLE two (b double, c date);
INSERT INTO one VALUES (1, 'x');
INSERT INTO two VALUES (1.5, '1994-07-09');
SELECT a, b, c, one.a, ONE.b, t.b, T.c FROM one, two t;
--# Integer 1|String x|Date 1994-07-09|Integer 1|String x|Double 1.5|Date 1994-07-09
--= a|b|c|a|b|b|c
SELECT x FROM one, two t;
--! 42S22 Error: Column x not found.
SELECT A FROM one, two t;
--! 42S22 Error: Column A not found.
SELECT t.a FROM one, two t;
--! 42S22 Error: Column t.a not found.
SELECT t.B FROM one, two t;
--! 42S22 Error: Column t.B not found.
SELECT t.b.c FROM one, two t;
--! 42S22 Error: Column t.b.c not found.
SELECT t. FROM one, two t;
--! 42S22 Error: Column t. not found.
SELECT two.c FROM one, two t;
--! 42S02 Error: Table two not found.
SELECT two.* FROM one, two t;
--! 42S02 Error: Table two not found.
SELECT DEFAULT FROM one, two t;
--! 42S22 Error: Column DEFAULT not found.

-- Wherever in an expression they stand; the first one is told.
SELECT 1 + x FROM one;
--! 42S22 Error: Column x not found.
SELECT x + y FROM one;
--! 42S22 Error: Column x not found.
SELECT a AND b AND x FROM one;
--! 42S22 Error: Column x not found.
SELECT -x FROM one;
--! 42S22 Error: Column x not found.
SELECT x LIKE y FROM one;
--! 42S22 Error: Column x not found.
SELECT a LIKE b ESCAPE x FROM one;
--! 42S22 Error: Column x not found.
SELECT SUBSTRING(b FROM a FOR x) FROM one;
--! 42S22 Error: Column x not found.
SELECT SUM(x.y) FROM one;
--! 42S02 Error: Table x not found.
SELECT -* FROM one;
--! 42S22 Error: Column * not found.
SELECT a = t.* FROM one, two t;
--! 42S22 Error: Column t.* not found.

-- Stars stand for the columns in their order, row numbers first.
SELECT * FROM one, two t;
--> 1|1|x|1|1.5|1994-07-09
--= _rowid|a|b|_rowid|b|c
SELECT t.*, one.a, ONE.* FROM one, two t;
--> 1|1.5|1994-07-09|1|1|1|x
--= _rowid|b|c|a|_rowid|a|b
SELECT * AS x FROM one;
--> 1|1|x
--= _rowid|a|b

-- A result without rows has its columns.
SELECT a, c FROM one, two WHERE a = 9;
--! 02000 No records found.
--= a|c
--: Integer|Date

-- What a column of the result is called.
SELECT a, one.a, a AS x, t.c x, a+1, a + 1 y, count(*), NULL, null AS n, 'it''s', -a, t.b LIKE 'x' FROM one, two t;
--> 1|1|1|1994-07-09|2|2|1|NULL|NULL|it's|-1|0
--= a|a|x|x|(a+1)|y|COUNT(*)|NULL|n|'it''s'|-(a)|t.b LIKE 'x'
