CREATE TABLE s (item string, shop string, n integer, price double, sold boolean, day date);
INSERT INTO s VALUES ('pen', 'north', 5, 1.5, TRUE, '2020-01-02');
INSERT INTO s VALUES ('ink', 'south', 256, 2.5, FALSE, '2020-01-01');
INSERT INTO s VALUES ('pen', 'south', 1, 1.25, TRUE, '2020-01-01');
INSERT INTO s VALUES ('cap', 'north', 2, 10.0, TRUE, '2020-01-02');
INSERT INTO s VALUES ('ink', 'north', -1, 9.0, FALSE, '2020-01-02');
INSERT INTO s VALUES ('pen', 'north', 1, 1.5, TRUE, '2020-01-03');

SELECT item, COUNT(*), SUM(n), MIN(price), MAX(price) FROM s GROUP BY item;
--> cap|1|2|10|10
--> ink|2|255|2.5|9
--> pen|3|7|1.25|1.5
SELECT shop, AVG(price) FROM s GROUP BY shop;
--> north|5.5
--> south|1.875
-- Groups come in the order of their keys' bytes: Integers by their bytes in memory, low one first.
SELECT n, COUNT(*) FROM s GROUP BY n;
--> 256|1
--> 1|2
--> 2|1
--> 5|1
--> -1|1
-- Doubles by their texts.
SELECT price, COUNT(*) FROM s GROUP BY price;
--> 1.25|1
--> 1.5|2
--> 10|1
--> 2.5|1
--> 9|1
SELECT sold, COUNT(*) FROM s GROUP BY sold;
--> FALSE|2
--> TRUE|4
SELECT day, COUNT(*) FROM s GROUP BY day;
--> 2020-01-01|2
--> 2020-01-02|3
--> 2020-01-03|1
SELECT item, shop, COUNT(*) FROM s GROUP BY item, shop;
--> cap|north|1
--> ink|north|1
--> ink|south|1
--> pen|north|2
--> pen|south|1
SELECT shop, item, SUM(n) FROM s GROUP BY shop, item;
--> north|cap|2
--> north|ink|-1
--> north|pen|6
--> south|ink|256
--> south|pen|1
-- A column that is not grouped is that of the group's first row.
SELECT item, shop, n, COUNT(*) FROM s GROUP BY item;
--> cap|north|2|1
--> ink|south|256|2
--> pen|north|5|3
-- What is not in the list may be grouped.
SELECT COUNT(*) FROM s GROUP BY item;
--> 1
--> 2
--> 3

-- WHERE takes rows away before, HAVING groups after.
SELECT item, COUNT(*) FROM s WHERE shop = 'north' GROUP BY item;
--> cap|1
--> ink|1
--> pen|2
SELECT item, COUNT(*) FROM s GROUP BY item HAVING COUNT(*) > 1;
--> ink|2
--> pen|3
SELECT item, COUNT(*) FROM s GROUP BY item HAVING item > 'd' AND MAX(price) < 5;
--> pen|3
SELECT item, COUNT(*) FROM s GROUP BY item HAVING SUM(n) / 100;
--> ink|2
SELECT item FROM s GROUP BY item HAVING COUNT(*) > 2;
--> pen
--> ink
--> pen
--> cap
--> ink
--> pen
SELECT item, COUNT(*) FROM s GROUP BY item HAVING COUNT(*) > 9;
SELECT item, COUNT(*) FROM s WHERE n > 999 GROUP BY item;
SELECT item, COUNT(*) FROM s GROUP BY item HAVING 1/0;
-- Without an aggregate among the items rows are not grouped.
SELECT shop FROM s GROUP BY shop;
--> north
--> south
--> south
--> north
--> north
--> north

-- Names, DISTINCT, ORDER BY.
SELECT item AS what, COUNT(*) AS many FROM s GROUP BY item ORDER BY many DESC;
--> pen|3
--> ink|2
--> cap|1
SELECT n, COUNT(*) FROM s GROUP BY n ORDER BY n;
--> -1|1
--> 1|2
--> 2|1
--> 5|1
--> 256|1
SELECT DISTINCT COUNT(*) FROM s GROUP BY price;
--> 1
--> 2
SELECT COUNT(*) AS many, shop FROM s GROUP BY item, shop ORDER BY many DESC, shop;
--> 2|north
--> 1|north
--> 1|north
--> 1|south
--> 1|south
-- GROUP BY takes columns by their names, not the names of items.
SELECT item AS what, COUNT(*) FROM s GROUP BY what;
--! 42S22 Error: Column what not found.
SELECT COUNT(*) FROM s GROUP BY T.item;
--! 42S02 Error: Table T not found.
SELECT T.item, COUNT(*) FROM s T GROUP BY t.item HAVING t.item <> 'pen';
--> cap|1
--> ink|2
SELECT item, COUNT(*) FROM s GROUP BY 1;
--! 07000 SQL Error: column name expected
SELECT item, COUNT(*) FROM s GROUP BY UPPER(item);
--! 07000 SQL Error: keyword expected
-- NULL there ends the statement without a result and without an error.
SELECT item, COUNT(*) FROM s GROUP BY NULL;
--! 00000 Success

-- The keys of several columns run together.
CREATE TABLE k (x string, y string, z integer);
INSERT INTO k VALUES ('a', 'bc', 1);
INSERT INTO k VALUES ('ab', 'c', 2);
INSERT INTO k VALUES ('abc', '', 3);
INSERT INTO k VALUES ('b', 'c', 4);
SELECT x, COUNT(*), SUM(z) FROM k GROUP BY x, y;
--> a|3|6
--> b|1|4
SELECT x, COUNT(*) FROM k GROUP BY y, x;
--> abc|1
--> a|1
--> ab|1
--> b|1
