-- A condition is true, false or unknown; the value that it leaves decides.
SELECT 1=1 AND 2=2, 1=1 AND 1=2, 1=2 AND 1=1, 1=2 AND 1=2;
--> 1|0|0|0
SELECT 1=1 OR 2=2, 1=1 OR 1=2, 1=2 OR 1=1, 1=2 OR 1=2;
--> 1|1|1|0
-- Unknown: false wins in AND, true in OR; else AND leaves 1 and OR leaves 0.
SELECT 1/0 AND 1=2, 1=2 AND 1/0, 1/0 AND 1=1, 1=1 AND 1/0, 1/0 AND 1/0;
--> 0|0|1|1|1
SELECT 1/0 OR 1=2, 1=2 OR 1/0, 1/0 OR 1=1, 1=1 OR 1/0, 1/0 OR 1/0;
--> 0|0|1|1|0
SELECT 1=1 AND 2=2 AND 3=3, 1=1 AND 2=2 AND 3=4, 1=2 OR 2=3 OR 3=3, 1=2 OR 2=3 OR 3=4;
--> 1|0|1|0
-- OR binds less than AND.
SELECT 1=1 OR 1=1 AND 1=2, (1=1 OR 1=1) AND 1=2;
--> 1|0
-- Terms count by their integer form.
SELECT 5 AND 7, 5 AND 0, 0 OR 3, 'x' OR 0, '1x' AND 1, 0.9 OR 0, 1.9 AND 1, TRUE AND 1, NULL OR 0;
--> 1|0|1|0|1|0|1|1|0
-- A NOT has an effect before LIKE alone.
SELECT NOT 1=1, NOT 1, NOT (1=2), 'a' NOT LIKE 'a', 'a' NOT LIKE 'b', NOT 'a' LIKE 'a';
--> 1|1|0|0|1|1
-- A comparison with a left side that is unknown leaves what that left; with a right one, the left side.
SELECT 1/0 = 1, 1 = 1/0, 0 = 1/0, 'a' = 1/0;
--> NULL|1|0|a

CREATE TABLE t (a integer, s string);
INSERT INTO t VALUES (0, 'zero');
INSERT INTO t VALUES (1, '1 one');
INSERT INTO t VALUES (2, 'two');

-- WHERE takes a row when the integer form of what the condition leaves isn't 0.
SELECT a FROM t WHERE a;
--> 1
--> 2
SELECT a FROM t WHERE s;
--> 1
-- A condition about no table makes the rows come backwards.
SELECT a FROM t WHERE 1;
--> 2
--> 1
--> 0
SELECT a FROM t WHERE 0;
--! 02000 No records found.
SELECT a FROM t WHERE NULL;
SELECT a FROM t WHERE 'yes';
SELECT a FROM t WHERE TRUE;
--> 2
--> 1
--> 0
SELECT a FROM t WHERE a * 0.6;
--> 2
SELECT a FROM t WHERE DATE '1994-07-09';
SELECT a FROM t WHERE 1/0;
SELECT a FROM t WHERE 1/0 = 1;
SELECT a FROM t WHERE a = 1/0;
--> 1
--> 2
SELECT a FROM t WHERE a = 1 AND 1/0 = 1;
--> 1
SELECT a FROM t WHERE a = 1 OR 1/0 = 1;
--> 1
SELECT a FROM t WHERE a < 2 AND s LIKE '%o%';
--> 0
--> 1
SELECT a FROM t WHERE a = 0 OR a = 2 AND s = 'two';
--> 0
--> 2
SELECT a FROM t WHERE (a = 0 OR a = 2) AND s = 'two';
--> 2
SELECT a FROM t WHERE NOT a = 1;
--> 1
SELECT a FROM t WHERE a NOT LIKE 1;
--> 0
--> 2
-- An aggregate has no group there.
SELECT a FROM t WHERE COUNT(*) > 0;
SELECT a FROM t WHERE a > 0 AND COUNT(*) > 5;
--> 1
--> 2
