CREATE TABLE e (what string, day date, clock time, stamp timestamp);
INSERT INTO e VALUES ('moon', '1969/7/20', '20:17:40', '1969-7-20 20:17:40');
INSERT INTO e VALUES ('wall', DATE '1989-11-9', TIME '18:53', TIMESTAMP '1989-11-09 18:53:0');
INSERT INTO e VALUES ('web', TIMESTAMP '1991-08-06 14:56:20', TIMESTAMP '1991-08-06 14:56:20', DATE '1991-08-06');
SELECT * FROM e;
--> 1|moon|1969-07-20|20:17:40|1969-07-20 20:17:40
--> 2|wall|1989-11-09|18:53:00|1989-11-09 18:53:00
--> 3|web|1991-08-06|14:56:20|1991-08-06 00:00:00
--: Integer|String|Date|Time|Timestamp
COMMIT;
--reopen
SELECT what FROM e WHERE day = DATE '1989-11-09';
--> wall
SELECT what FROM e WHERE day = '1989-11-09';
--> wall
SELECT what FROM e WHERE day = 'DATE 1989-11-09';
--> wall
SELECT what FROM e WHERE '1989-11-09' = day;
--> wall
-- Texts on the other side are taken as they are.
SELECT what FROM e WHERE day = '1989-11-9';
SELECT what FROM e WHERE day = DATE '1989/11/9';
--> wall
SELECT what FROM e WHERE day > '1980' AND day < '1990-01-01';
--> wall
SELECT what, clock FROM e WHERE clock >= TIME '18:53' ORDER BY clock;
--> wall|18:53:00
--> moon|20:17:40
SELECT what FROM e WHERE stamp > DATE '1989-11-09';
--> wall
--> web
SELECT what FROM e WHERE stamp = day;
SELECT what FROM e WHERE stamp LIKE '%18:53%';
--> wall
SELECT what FROM e WHERE day LIKE '____-07-%';
--> moon
SELECT MIN(day), MAX(day), MIN(clock), COUNT(stamp) FROM e;
--> 1969-07-20|1991-08-06|14:56:20|3
SELECT what, day FROM e ORDER BY day DESC;
--> web|1991-08-06
--> wall|1989-11-09
--> moon|1969-07-20
SELECT SUBSTRING(day FROM 6 FOR 4) AS year, COUNT(*) FROM e GROUP BY day ORDER BY year;
--> 1969|1
--> 1989|1
--> 1991|1
SELECT ''+day, 'at '+clock, CHAR_LENGTH(stamp) FROM e WHERE what = 'moon';
--> DATE 1969-07-20|at TIME 20:17:40|29

-- From column to column.
UPDATE e SET day = stamp, clock = stamp WHERE what = 'web';
SELECT day, clock FROM e WHERE what = 'web';
--> 1991-08-06|00:00:00
UPDATE e SET stamp = day, what = day WHERE _rowid = 2;
SELECT what, stamp FROM e WHERE _rowid = 2;
--> DATE 1989-11-09|1989-11-09 00:00:00
UPDATE e SET day = 'DATE 2000-2-30', clock = '25:61' WHERE _rowid = 2;
SELECT day, clock FROM e WHERE _rowid = 2;
--> 2000-02-30|25:61:00
INSERT INTO e (day, clock) SELECT day, clock FROM e WHERE what = 'moon';
SELECT day, clock FROM e WHERE _rowid = 4;
--> 1969-07-20|20:17:40
-- Quotes and escapes inside are undone first.
SELECT DATE '19''94-7-9', DATE 'N''1994-7-9';
--> 0094-07-09|1994-07-09
SET ESCAPE \;
SELECT DATE '1994-\7-9', TIME '\8:4', 'a\'b', DATE '1994\-7\-9';
--> 1994-07-09|08:04:00|a'b|1994-07-09
SET ESCAPE ;
SELECT DATE '1994-\7-9';
--> 1994-00-09
