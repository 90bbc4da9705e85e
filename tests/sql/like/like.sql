-- "%" any bytes, "_" one byte, all else itself, capitals apart.
SELECT 'foo' LIKE 'foo', 'foo' LIKE '_oo', 'foo' LIKE 'f_o', 'foo' LIKE 'fo_', 'foo' LIKE '_o_', 'foo' LIKE '___';
--> 1|1|1|1|1|1
SELECT 'foo' LIKE '%foo', 'foo' LIKE '%oo', 'foo' LIKE 'f%o', 'foo' LIKE 'fo%', 'foo' LIKE 'foo%', 'foo' LIKE '%';
--> 1|1|1|1|1|1
SELECT 'foo' LIKE 'fom', 'foo' LIKE '_foo', 'foo' LIKE '____', 'foo' LIKE 'foo_', 'foo' LIKE 'fo', 'foo' LIKE 'FOO', 'foo' LIKE '';
--> 0|0|0|0|0|0|0
SELECT 'cool vanilla beans' LIKE '%vanilla%', 'cool vanilla beans' LIKE '_vanilla%', 'cool vanilla beans' LIKE '%vanilla_', 'cool vanilla beans' LIKE '%chocolate%';
--> 1|0|0|0
SELECT 'foo.dat' LIKE '%.d__', 'foo.dim' LIKE '%.d__', 'foo.bat' LIKE '%.d__', 'foo.db' LIKE '%.d__';
--> 1|1|0|0
SELECT 'abef abccdef abcdef abcef' LIKE '%ab__ef%', 'abef abccdef abxef abcef' LIKE '%ab__ef%', 'abef abccdef abcdeg abcef' LIKE '%ab__ef%';
--> 1|0|0
SELECT 'abc' LIKE '%b%', 'abc' LIKE '%%', 'abc' LIKE '%_%', 'abc' LIKE '_%_', 'a' LIKE '_%_', 'abc' LIKE '%c%%', 'aXbXc' LIKE 'a%X%c';
--> 1|1|1|1|0|0|1
-- Nothing at all matches "" and "%" alone; so "%%" does not match the end of a text.
SELECT '' LIKE '', '' LIKE '%', '' LIKE '%%', '' LIKE '_', '' LIKE 'a';
--> 1|1|0|0|0
SELECT 'a' LIKE 'a%%', 'a' LIKE 'a%', 'ab' LIKE 'a%%', 'a' LIKE '%a%';
--> 0|1|1|1
-- Bytes, not characters.
SELECT 'é' LIKE '_', 'é' LIKE '__', 'é' LIKE 'é', 'é' LIKE '%';
--> 0|1|1|1
-- Any value has a text.
SELECT 42 LIKE '4_', 4.5 LIKE '4.%', TRUE LIKE 'TR%', DATE '1994-07-09' LIKE '1994%', 12 LIKE 12, 'a1' LIKE 'a'+1;
--> 1|1|1|1|1|1

-- ESCAPE makes the next character itself.
SELECT 'f%oo' LIKE 'f^%oo' ESCAPE '^', 'fxoo' LIKE 'f^%oo' ESCAPE '^', '_foo' LIKE '^_foo%' ESCAPE '^', 'xfoo' LIKE '^_foo%' ESCAPE '^';
--> 1|0|1|0
SELECT 'this^that' LIKE '%^^that' ESCAPE '^', '50%' LIKE '50^%' ESCAPE '^', '50%' LIKE '50!%' ESCAPE '!', 'a%' LIKE 'a/%' ESCAPE '/';
--> 1|1|1|1
SELECT 'fooo' LIKE 'f^ooo' ESCAPE '^', 'f^oo' LIKE 'f^oo', 'f^xo' LIKE 'f^_o', 'f_o' LIKE 'f^_o';
--> 1|1|1|0
-- The character behind an escaped one is never looked at: here the second % is itself too.
SELECT 'a^%' LIKE 'a^^%' ESCAPE '^', 'a^xy' LIKE 'a^^%' ESCAPE '^', 'a%%' LIKE 'a^%%' ESCAPE '^', 'a%x' LIKE 'a^%%' ESCAPE '^';
--> 1|0|1|0
-- It has to be one byte; else the match can't be computed.
SELECT 'a' LIKE 'a' ESCAPE '^^', 'a' LIKE 'a' ESCAPE '', 'a' LIKE 'a' ESCAPE 'é', 'a' LIKE 'a' ESCAPE 1, 'a' LIKE 'a' ESCAPE 12;
--> NULL|NULL|NULL|1|NULL

-- NOT LIKE, and what can't be computed.
SELECT 'foo' NOT LIKE 'f%', 'foo' NOT LIKE 'g%', 'f%' NOT LIKE 'f^%' ESCAPE '^', 'foo' NOT LIKE 'g' ESCAPE '';
--> 0|1|0|NULL
SELECT (1/0) LIKE '%', 'a' LIKE 'a'-'b', 'a' NOT LIKE 1/0;
--> NULL|NULL|NULL

-- In conditions.
CREATE TABLE f (name string, pattern string);
INSERT INTO f VALUES ('index.htm', '%.htm');
INSERT INTO f VALUES ('index.html', '%.htm');
INSERT INTO f VALUES ('Index', 'i%');
INSERT INTO f VALUES ('', '%');
SELECT name FROM f WHERE name LIKE 'i%';
--> index.htm
--> index.html
SELECT name FROM f WHERE name LIKE pattern;
--> index.htm
-->
SELECT name FROM f WHERE name NOT LIKE pattern;
--> index.html
--> Index
SELECT name FROM f WHERE name LIKE '%x%' AND name NOT LIKE '%l' OR name LIKE '';
--> index.htm
--> Index
-->
SELECT name FROM f WHERE UPPER(name) LIKE 'INDEX%';
--> index.htm
--> index.html
--> Index
SELECT name FROM f WHERE name LIKE 'a' ESCAPE '';

-- Where runs and their neighbours meet.
SELECT 'foo' LIKE '%___', 'foo' LIKE '__%_', 'foo' LIKE '%____', 'foo' LIKE 'foo%%', 'foo' LIKE 'foo%_', 'foo' LIKE 'fo%%';
--> 1|1|0|0|0|1
SELECT 'aab' LIKE '%ab', 'abab' LIKE '%ab', 'abcab' LIKE 'ab%ab', 'aba' LIKE 'ab%ba', 'mississippi' LIKE 'm%issi%issi%i', 'mississippi' LIKE 'm%iss%ip%i';
--> 1|1|1|0|0|1
SELECT 'xxab1cdyy' LIKE '%ab_cd%', 'xxa1bcdyya2bcd' LIKE '%a_bcd', 'vanilla' LIKE '%vanilla%', '' LIKE 'foo';
--> 1|1|1|0
-- The letter after an escaped one is literal too; the next is not.
SELECT 'a^%b' LIKE 'a^^%b' ESCAPE '^', 'a^xb' LIKE 'a^^%b' ESCAPE '^', 'a^xyb' LIKE 'a^^x%b' ESCAPE '^', 'ax^_' LIKE 'a^x^_' ESCAPE '^', 'ax^z' LIKE 'a^x^_' ESCAPE '^', 'ax_' LIKE 'a^x^_' ESCAPE '^';
--> 1|0|1|1|1|0
-- An escape at the end stands for nothing.
SELECT 'ab' LIKE 'ab^' ESCAPE '^', 'ab^' LIKE 'ab^' ESCAPE '^', 'a' LIKE '^' ESCAPE '^', '' LIKE '^' ESCAPE '^', 'a' LIKE '%^' ESCAPE '^', '' LIKE '%^' ESCAPE '^', 'a' LIKE 'a%^' ESCAPE '^';
--> 1|0|0|0|1|0|0
SELECT '^' LIKE '%' ESCAPE '^', '%' LIKE '%^%' ESCAPE '^', 'x' LIKE '%^%' ESCAPE '^', 'axxb' LIKE 'a%%b' ESCAPE '%', 'axxb' LIKE 'a__b' ESCAPE '_', 'a_b' LIKE 'a__b' ESCAPE '_';
--> 1|1|0|1|1|0
-- Any value by its stored text; each row by its own pattern and escape.
SELECT NULL LIKE 'N_LL', 'NULL' LIKE NULL, '1994-07-09' LIKE DATE '1994-07-09', DATE '1994-07-09' LIKE 'DATE%', TIMESTAMP '1994-7-9 1:2:3' LIKE '% 01:__:03', -42 LIKE '-4_';
--> 1|1|1|0|1|1
CREATE TABLE e (text string, pattern string, esc string);
INSERT INTO e VALUES ('ab', 'a%', '^');
INSERT INTO e VALUES ('ab', 'b%', '^');
INSERT INTO e VALUES ('a%', 'a^%', '^');
INSERT INTO e VALUES ('a%', 'a^%', '#');
INSERT INTO e VALUES ('a%', 'a%', '##');
SELECT text LIKE pattern ESCAPE esc FROM e;
--> 1
--> 0
--> 1
--> 0
--> NULL
