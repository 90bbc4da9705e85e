-- Lengths: texts and Integers; other types have none in bytes and bits.
SELECT BIT_LENGTH('foo'), BIT_LENGTH(''), BIT_LENGTH(5), BIT_LENGTH(1.5), BIT_LENGTH(TRUE), BIT_LENGTH(DATE '1994-07-09');
--> 24|0|32|NULL|NULL|NULL
--: Integer|Integer|Integer|Integer|Integer|Integer
SELECT OCTET_LENGTH('foo'), OCTET_LENGTH('æøå'), OCTET_LENGTH(5), OCTET_LENGTH(1.5), OCTET_LENGTH(TIME '8:00');
--> 3|6|4|NULL|NULL
SELECT CHAR_LENGTH('foo'), CHARACTER_LENGTH('æøå'), CHAR_LENGTH(''), CHAR_LENGTH('日本'), CHAR_LENGTH('a😀b');
--> 3|3|0|2|3
SELECT CHAR_LENGTH(12345), CHAR_LENGTH(-1.5), CHAR_LENGTH(TRUE), CHAR_LENGTH(DATE '1994-07-09');
--> 5|4|4|15

-- Case.
SELECT UPPER('foo'), LOWER('FOO'), UPPER('Foo 1!'), LOWER(''), UPPER(42), LOWER(TRUE), LOWER(1.5);
--> FOO|foo|FOO 1!||42|true|1.5
SELECT UPPER('æøåéß'), LOWER('ÆØÅÉ'), UPPER('ελλ'), LOWER('ЖУК');
--> ÆØÅÉß|æøåé|ΕΛΛ|жук
SELECT UPPER(DATE '1994-07-09'), LOWER(TIME '8:00');
--> DATE 1994-07-09|time 08:00:00

-- POSITION counts characters from 1.
SELECT POSITION('fu' IN 'snafu'), POSITION('s' IN 'snafu'), POSITION('x' IN 'snafu'), POSITION('' IN 'snafu');
--> 4|1|0|1
SELECT POSITION('' IN ''), POSITION('a' IN ''), POSITION('snafu' IN 'snafu'), POSITION('snafus' IN 'snafu');
--> 1|0|1|0
SELECT POSITION('a' IN 'banana'), POSITION('ana' IN 'banana'), POSITION('nan' IN 'banana'), POSITION('A' IN 'banana');
--> 2|2|3|0
SELECT POSITION('c' IN 'äbc'), POSITION('ö' IN 'äö'), POSITION('本' IN '日本語');
--> 3|2|2
SELECT POSITION(3 IN 12345), POSITION('5' IN 12345), POSITION('U' IN TRUE), POSITION(POSITION('b' IN 'abc') IN '1234');
--> 3|5|3|2

-- SUBSTRING counts characters from 1; a start below that is 1, a length below 0 is 0.
SELECT SUBSTRING('Foo' FROM 1), SUBSTRING('Foo' FROM 1 FOR 2), SUBSTRING('Foo' FROM 2 FOR 2), SUBSTRING('Foo' FROM 3 FOR 1);
--> Foo|Fo|oo|o
SELECT SUBSTRING('foobar' FROM 3), SUBSTRING('foobar' FROM 6), SUBSTRING('foobar' FROM 7), SUBSTRING('foobar' FROM 70);
--> obar|r||
SELECT SUBSTRING('foobar' FROM 0 FOR 2), SUBSTRING('foobar' FROM -5 FOR 2), SUBSTRING('foobar' FROM 2 FOR 0), SUBSTRING('foobar' FROM 2 FOR -1);
--> fo|fo||
SELECT SUBSTRING('foobar' FROM 2 FOR 100), SUBSTRING('foobar' FROM 6 FOR 999999999), SUBSTRING('' FROM 1 FOR 3);
--> oobar|r|
SELECT SUBSTRING('äöü' FROM 2 FOR 1), SUBSTRING('äöü' FROM 2), SUBSTRING('日本語' FROM 3 FOR 5);
--> ö|öü|語
SELECT SUBSTRING(12345 FROM 2 FOR 3), SUBSTRING('foobar' FROM '2'), SUBSTRING('foobar' FROM 2.9 FOR 1.9);
--> 234|oobar|o
SELECT SUBSTRING(DATE '1994-07-09' FROM 1 FOR 6), SUBSTRING('a'+'bc' FROM 1+1);
--> DATE 1|bc

-- TRIM takes a whole text away, at the front first.
SELECT '['+TRIM('  x  ')+']', '['+TRIM(LEADING FROM '  x  ')+']', '['+TRIM(TRAILING FROM '  x  ')+']', '['+TRIM(BOTH FROM '  x  ')+']';
--> [x]|[x  ]|[  x]|[x]
SELECT TRIM('?' FROM '???foo???'), TRIM(LEADING '?' FROM '???foo???'), TRIM(TRAILING '?' FROM '???foo???'), TRIM(BOTH '?' FROM 'foo');
--> foo|foo???|???foo|foo
SELECT TRIM('ab' FROM 'ababxab'), TRIM('ab' FROM 'abxaba'), TRIM(LEADING 'abc' FROM 'ab'), TRIM('aa' FROM 'aaaxaaa');
--> x|xaba|ab|axa
-- What is trimmed at the end alone never takes the very first one.
SELECT TRIM(TRAILING '?' FROM '???'), TRIM('?' FROM '???'), TRIM(LEADING '?' FROM '???'), TRIM(TRAILING 'ab' FROM 'abab');
--> ?|||ab
SELECT '['+TRIM('' FROM ' x ')+']', '['+TRIM('')+']', '['+TRIM('?' FROM '')+']', '['+TRIM('    ')+']';
--> [ x ]|[]|[]|[]
SELECT TRIM('1' FROM 12321), TRIM(1 FROM '121'), TRIM('é' FROM 'éaé');
--> 232|2|a
SELECT TRIM(leading '0' FROM '007'), TRIM(Trailing '0' FROM 100), TRIM(BOTH 'x' FROM 'X');
--> 7|1|X

-- Calls inside calls, and what can't be computed.
SELECT UPPER(SUBSTRING('foobar' FROM POSITION('b' IN 'foobar'))), CHAR_LENGTH(TRIM('  abc ') + UPPER('d'));
--> BAR|4
SELECT UPPER(1/0), SUBSTRING('abc' FROM 1/0), UPPER('a'-'b'), CHAR_LENGTH(1/0) + 1;
--> NULL|NULL|NULL|NULL
-- A function's name without parentheses is a call of it with NULL for its arguments.
SELECT LOWER, UPPER, POSITION, SUBSTRING, TRIM, LAST_ROWID;
--> null|NULL|1|NULL|NULL|NULL
--= LOWER()|UPPER()|POSITION( IN )|SUBSTRING( FROM )|TRIM()|LAST_ROWID()

-- Of a table's columns.
CREATE TABLE w (word string, n integer);
INSERT INTO w VALUES ('  Apple', 7);
INSERT INTO w VALUES ('pear  ', 42);
INSERT INTO w VALUES ('', -1);
SELECT '['+TRIM(BOTH ' ' FROM word)+']', CHAR_LENGTH(word), UPPER(word), POSITION('p' IN word), SUBSTRING(word FROM 2 FOR 3), OCTET_LENGTH(n) FROM w;
--> [Apple]|7|  APPLE|4| Ap|4
--> [pear]|6|PEAR  |1|ear|4
--> []|0||0||4
SELECT TRIM(word) FROM w;
--! 07000 SQL Error: keyword expected
SELECT TRIM((word)) FROM w;
--> Apple
--> pear
-->
SELECT word FROM w WHERE CHAR_LENGTH(word) > 6;
-->   Apple

-- Every argument counts by its text or number, and results have a type of their own.
SELECT BIT_LENGTH(-200000000), CHAR_LENGTH(-200000000), CHAR_LENGTH(NULL), OCTET_LENGTH(NULL), BIT_LENGTH('€😀'), CHAR_LENGTH('€😀');
--# Integer 32|Integer 10|Integer 4|NULL None|Integer 56|Integer 2
SELECT UPPER('@AZ[`az{'), LOWER('@AZ[`az{'), LOWER(NULL), UPPER(42);
--# String @AZ[`AZ{|String @az[`az{|String null|String 42
SELECT POSITION('abac' IN 'abababac'), POSITION(DATE '1994-01-01' IN 'x1994'), POSITION('1994' IN DATE '1994-07-09'), POSITION(NULL IN 'a NULL'), POSITION('z' IN 'tétéz');
--# Integer 5|Integer 0|Integer 6|Integer 3|Integer 5
SELECT SUBSTRING('Foo' FROM '2 ' FOR '1'), SUBSTRING('Foo' FROM NULL FOR 2), SUBSTRING(NULL FROM 1 FOR 2), SUBSTRING('Foo' FROM 4 FOR 1), SUBSTRING('aé€z' FROM 4 FOR 5);
--# String o|String Fo|String NU|String |String z
SELECT TRIM('ab' FROM 'abaxbab'), TRIM('X' FROM 'xfoox'), TRIM('foofoo' FROM 'foo'), TRIM(TRAILING 'ab' FROM 'xabab'), TRIM('N' FROM NULL), TRIM(1 FROM 110);
--# String axb|String xfoox|String foo|String x|String ULL|String 0
SELECT '['+TRIM(TRAILING FROM ' ')+']', '['+TRIM(TRAILING FROM '   ')+']', '['+TRIM(LEADING FROM '   ')+']', '['+TRIM(TRAILING FROM ' a')+']';
--> [ ]|[ ]|[]|[ a]

-- Letters map one code point to one: ASCII and its neighbours, Latin, Cyrillic, Greek with its final sigma.
SELECT LOWER('Az09 [`{@'), UPPER('Az09 [`{@'), LOWER('Ää'), UPPER('Ää'), LOWER('Яя'), UPPER('Яя'), LOWER('Σσς'), UPPER('Σσς');
--> az09 [`{@|AZ09 [`{@|ää|ÄÄ|яя|ЯЯ|σσς|ΣΣΣ
-- Sharp s has no upper case of one code point. Long s, the Kelvin sign and A with stroke change their length in bytes.
SELECT LOWER('straße'), UPPER('straße'), LOWER('ſ'), UPPER('ſ'), LOWER('K'), UPPER('K'), LOWER('Ⱥ'), UPPER('Ⱥ'), LOWER('ÿ'), UPPER('ÿ');
--> straße|STRAßE|ſ|S|k|K|ⱥ|Ⱥ|ÿ|Ÿ
-- Four bytes, and characters without case.
SELECT LOWER('𐐀𐐨'), UPPER('𐐀𐐨'), LOWER('漢😀'), UPPER('漢😀');
--> 𐐨𐐨|𐐀𐐀|漢😀|漢😀

-- Numbers at the ends of their range.
SELECT SUBSTRING('Foo' FROM 2147483647 FOR 2147483647), SUBSTRING('Foo' FROM 2 FOR 2147483647), SUBSTRING('Foo' FROM -2147483648 FOR 2), SUBSTRING('Foo' FROM 2 FOR -2147483648), SUBSTRING('éz' FROM 2147483647 FOR 2147483647);
--> |oo|Fo||
