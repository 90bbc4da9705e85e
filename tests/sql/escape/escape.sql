-- Without an escape character a backslash is a character.
SELECT 'a\b', 'a\\b', '\';
--> a\b|a\\b|\
SET ESCAPE \;
SELECT 'a\b', 'a\\b', '\'', 'a\'b', 'it''s', '\\', '\a\b\c';
--> ab|a\b|'|a'b|it's|\|abc
-- A quote behind it does not end the literal.
SELECT 'a\'', 'a;b\';c', '\'''';
--> a'|a;b';c|''
-- It is the same in INSERT, UPDATE and conditions.
CREATE TABLE t (s string);
INSERT INTO t VALUES ('50\%');
INSERT INTO t VALUES ('50\\%');
UPDATE t SET s = s + '\'' WHERE s = '50\%';
SELECT s FROM t WHERE s LIKE '%\'';
--> 50%'
SELECT s FROM t WHERE s LIKE '%\\%';
--> 50\%
-- LIKE has an escape character of its own: here the literal's is undone first.
SELECT '50%' LIKE '50\%', '50x' LIKE '50\%', '50%' LIKE '50^%' ESCAPE '^', '50%' LIKE '50\\%' ESCAPE '\\';
--> 1|1|1|1
-- Names of items are read like literals too.
SELECT 1 AS a\b FROM t;
--! 07000 SQL Error: FROM expected
-- Another character, then none.
SET ESCAPE ^;
SELECT 'a^'b', 'a\b', 'a^^b';
--> a'b|a\b|a^b
set escape !;
SELECT 'a!'b', 'a^b', 1 AS a!b;
--> a'b|a^b|1
--= 'a!'b'|'a^b'|ab
SET ESCAPE ab;
--! 07000 Error: ESCAPE character must be only one byte.
SET ESCAPE é;
--! 07000 Error: ESCAPE character must be only one byte.
SELECT 'a!'b';
--> a'b
SET ESCAPE;
SELECT 'a!b', 'a\b';
--> a!b|a\b
SET OTHER 5;
--! 07000 SQL Error: keyword expected
SET;
--! 07000 SQL Error: keyword expected
-- It survives the end of a transaction, not that of the session.
SET ESCAPE !;
COMMIT;
SELECT '!'';
--> '
ROLLBACK;
SELECT '!'';
--> '
SET ESCAPE ;
SELECT '!!';
--> !!
