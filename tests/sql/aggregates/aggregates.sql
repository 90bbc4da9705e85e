CREATE TABLE a (i integer, d double, s string, b boolean, day date);

-- Of no rows at all: one row of zero counts and nulls.
SELECT COUNT(*), COUNT(i), SUM(i), AVG(i), MIN(i), MAX(i), MIN(s) FROM a;
--> 0|0|NULL|NULL|NULL|NULL|NULL
--= COUNT(*)|COUNT(i)|SUM(i)|AVG(i)|MIN(i)|MAX(i)|MIN(s)
SELECT COUNT(*), i, i + 1, 5, 'x' FROM a;
--> 0|NULL|NULL|5|x

INSERT INTO a VALUES (1, 1.5, 'pear', TRUE, '1994-07-09');
INSERT INTO a VALUES (2, 2.5, 'apple', FALSE, '1984-05-06');
INSERT INTO a VALUES (2, 3.5, 'fig', TRUE, '2001-01-01');
INSERT INTO a VALUES (-3, 0.5, 'apple', TRUE, '1994-07-09');

SELECT COUNT(*), COUNT(i), COUNT(s), COUNT(1), COUNT FROM a;
--> 4|4|4|4|4
SELECT SUM(i), SUM(d), AVG(i), AVG(d), MIN(i), MAX(i), MIN(d), MAX(d) FROM a;
--> 2|8|0.5|2|-3|2|0.5|3.5
-- The columns are declared Integers, whatever is in them.
SELECT SUM(d), AVG(d), MIN(s), MAX(s), MIN(day), MAX(day) FROM a;
--> 8|2|apple|pear|1984-05-06|2001-01-01
--: Integer|Integer|Integer|Integer|Integer|Integer
SELECT SUM(b), AVG(b), MIN(b), MAX(b), COUNT(b) FROM a;
--> 3|0.75|FALSE|TRUE|4

-- Texts count by their leading numbers, and make a Double.
SELECT SUM(s), SUM('2x'), AVG('1.5'), SUM(1), AVG(1) FROM a;
--> 0|8|1.5|4|1

-- Expressions inside and outside.
SELECT SUM(i * 2), SUM(i) * 2, SUM(i + d), MAX(i) - MIN(i), COUNT(*) + 1, -SUM(i), MAX(UPPER(s)) FROM a;
--> 4|4|10|5|5|-2|PEAR
SELECT 'rows: ' + COUNT(*), MAX(i) = 2, SUM(i) > 5 OR COUNT(*) = 4, CHAR_LENGTH(MIN(s)) FROM a;
--> rows: 4|1|1|5

-- DISTINCT counts equal values once; MIN and MAX pay no heed.
SELECT COUNT(DISTINCT i), COUNT(DISTINCT s), SUM(DISTINCT i), AVG(DISTINCT i), MIN(DISTINCT i), MAX(DISTINCT i) FROM a;
--> 3|3|0|0|-3|2
SELECT COUNT(ALL i), SUM(ALL i), COUNT(DISTINCT d), COUNT(DISTINCT b), SUM(DISTINCT b), SUM(DISTINCT 5) FROM a;
--> 4|2|4|2|1|5
-- A Date never equals a Date.
SELECT COUNT(DISTINCT day), COUNT(day) FROM a;
--> 4|4

-- With WHERE, and of what can't be computed.
SELECT COUNT(*), SUM(d), MIN(s) FROM a WHERE i = 2;
--> 2|6|apple
SELECT COUNT(*), SUM(d), MIN(s), MAX(s) FROM a WHERE i = 99;
--> 0|NULL|NULL|NULL
SELECT COUNT(10 / (i - 1)), SUM(10 / (i - 1)), MIN(10 / (i - 1)), COUNT(s - s), SUM(1/0) FROM a;
--> 3|18|-2|0|NULL
-- A column beside an aggregate is that of the group's first row.
SELECT i, s, COUNT(*) FROM a;
--> 1|pear|4
SELECT i, s, COUNT(*) FROM a WHERE i <> 1;
--> 2|apple|3

-- Sums are exact, and Doubles when they no longer fit.
CREATE TABLE big (n integer);
INSERT INTO big VALUES (2000000000.0);
INSERT INTO big VALUES (147483647);
SELECT SUM(n), AVG(n) FROM big;
--> 2147483647|1073741823.5
INSERT INTO big VALUES (1);
SELECT SUM(n), AVG(n), SUM(n) - 1, MAX(n) FROM big;
--> 2147483648|715827882.6666666|2147483647|2000000000
INSERT INTO big VALUES (-2000000000.0);
INSERT INTO big VALUES (-2000000000.0);
INSERT INTO big VALUES (-2000000000.0);
SELECT SUM(n), MIN(n) FROM big;
--> -3852516352|-2000000000

-- MIN and MAX give the operand's own value.
SELECT MIN(n + 0.5), MAX(n * 1.0), MAX(0.5) FROM big;
--> -1999999999.5|2000000000|0.5

-- COUNT(*) without FROM counts the one row that there is.
SELECT COUNT(*), SUM(5), MAX('x'), COUNT(NULL);
--> 1|5|x|0
-- HAVING without GROUP BY is not looked at.
SELECT COUNT(*) FROM a HAVING COUNT(*) > 100;
--> 4
-- An aggregate that lacks its operand computes nothing.
SELECT SUM, COUNT FROM a;
--> NULL|4
--= SUM()|COUNT(*)

-- Aggregates of aggregates run over the same group, once for each of its rows.
CREATE TABLE nest (k integer, n integer);
INSERT INTO nest VALUES (1, 4);
INSERT INTO nest VALUES (1, 6);
INSERT INTO nest (k) VALUES (1);
INSERT INTO nest VALUES (2, 1);
SELECT SUM(COUNT(*)), SUM(SUM(n)), COUNT(DISTINCT MAX(n)), SUM(n * COUNT(n)), SUM(SUM) FROM nest WHERE k = 1;
--# Integer 9|Integer 30|Integer 1|Integer 20|NULL Integer
SELECT k, MAX(SUM(n)), COUNT(n), AVG(n) FROM nest GROUP BY k;
--> 1|10|2|5
--> 2|1|1|1
-- Anew for every row of the level above, these would take 1024 to the power of 10 steps.
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
INSERT INTO nest (n) SELECT n FROM nest;
SELECT COUNT(*), MAX(MAX(MAX(MAX(MAX(MAX(MAX(MAX(MAX(MAX(n)))))))))) FROM nest;
--> 1024|6

-- What the largest and smallest numbers come to, and what a NULL does among others.
CREATE TABLE ends (i integer, t string, day date);
INSERT INTO ends (t) VALUES ('10 eggs');
INSERT INTO ends VALUES (-2147483648, '9', '1994-10-01');
INSERT INTO ends VALUES (-1, '9', '1994-07-09');
SELECT COUNT(i), SUM(i), AVG(i), MIN(i), MAX(i), MAX(i) * -1 FROM ends;
--# Integer 2|Double -2147483649|Double -1073741824.5|Integer -2147483648|Integer -1|Integer 1
SELECT COUNT(t), SUM(t), AVG(t), MIN(t), MAX(t), COUNT(day), SUM(day), AVG(day), MIN(day), MAX(day) FROM ends WHERE i < 0 OR t > '1';
--# Integer 3|Double 28|Double 9.333333333333334|String 10 eggs|String 9|Integer 2|Integer 0|Double 0|Date 1994-07-09|Date 1994-10-01
