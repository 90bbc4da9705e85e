-- Which date and which time a text holds.
-- Nothing.
SELECT DATE '', TIME '';
--> 0000-00-00|00:00:00
-- No separators.
SELECT DATE 'no date', TIME 'no date';
--> 0000-00-00|00:00:00
SELECT DATE '1984-5-06', TIME '1984-5-06';
--> 1984-05-06|00:00:00
-- Slashes.
SELECT DATE '1984/05/06 12:34:56', TIME '1984/05/06 12:34:56';
--> 1984-05-06|12:34:56
-- One digit of seconds.
SELECT DATE '1984/05/06 12:34:6', TIME '1984/05/06 12:34:6';
--> 1984-05-06|12:34:06
-- No seconds.
SELECT DATE '1984-5-6 8:4', TIME '1984-5-6 8:4';
--> 1984-05-06|08:04:00
-- A word before the date.
SELECT DATE 'DATE 1984-05-06', TIME 'DATE 1984-05-06';
--> 1984-05-06|00:00:00
-- Canonical, the date alone.
SELECT DATE '1984-12-23', TIME '1984-12-23';
--> 1984-12-23|00:00:00
-- Canonical, nothing in it.
SELECT DATE '0000-00-00', TIME '0000-00-00';
--> 0000-00-00|00:00:00
-- Canonical, the time alone.
SELECT DATE '12:34:56', TIME '12:34:56';
--> 0000-00-00|12:34:56
-- As long as a canonical date.
SELECT DATE '198-12-233', TIME '198-12-233';
--> 0198-12-23|00:00:00
SELECT DATE '1984/12/23', TIME '1984/12/23';
--> 1984-12-23|00:00:00
SELECT DATE '1984-1-x23', TIME '1984-1-x23';
--> 1984-01-00|00:00:00
-- As long as a canonical time.
SELECT DATE '1:23:456', TIME '1:23:456';
--> 0000-00-00|01:23:45
SELECT DATE '12:34-56', TIME '12:34-56';
--> 0034-56-00|12:34:00
-- A word before both.
SELECT DATE 'TIMESTAMP 1984-12-23 12:34:56', TIME 'TIMESTAMP 1984-12-23 12:34:56';
--> 1984-12-23|12:34:56
-- A short year.
SELECT DATE '84-5-6', TIME '84-5-6';
--> 0084-05-06|00:00:00
-- No day.
SELECT DATE '1984-5', TIME '1984-5';
--> 1984-05-00|00:00:00
-- The year alone.
SELECT DATE '1984-', TIME '1984-';
--> 1984-00-00|00:00:00
-- No year.
SELECT DATE '-5-6', TIME '-5-6';
--> 0000-05-06|00:00:00
-- The separator alone.
SELECT DATE '-', TIME '-';
--> 0000-00-00|00:00:00
-- No month.
SELECT DATE '1984--6', TIME '1984--6';
--> 1984-00-06|00:00:00
-- A letter where the year ends.
SELECT DATE 'x-1-2', TIME 'x-1-2';
--> 0000-01-02|00:00:00
-- A blank where the year ends.
SELECT DATE '1984 -5-6', TIME '1984 -5-6';
--> 0000-05-06|00:00:00
-- A blank before the month.
SELECT DATE '1984- 5-6', TIME '1984- 5-6';
--> 1984-00-06|00:00:00
-- A blank before the day.
SELECT DATE '1984-5- 6', TIME '1984-5- 6';
--> 1984-05-00|00:00:00
-- The next separator, wherever it is.
SELECT DATE '1984-5 x-6', TIME '1984-5 x-6';
--> 1984-05-06|00:00:00
-- Two digits of each at most.
SELECT DATE '1984-123-456', TIME '1984-123-456';
--> 1984-12-45|00:00:00
-- The first - wins over a / before it.
SELECT DATE '1984/5-6', TIME '1984/5-6';
--> 0005-06-00|00:00:00
-- What follows is ignored.
SELECT DATE '1984/5/6/7', TIME '1984/5/6/7';
--> 1984-05-06|00:00:00
-- A year of five digits.
SELECT DATE '12345-1-2', TIME '12345-1-2';
--> 12345-01-02|00:00:00
-- The same without leading zeros.
SELECT DATE '0012345-1-2', TIME '0012345-1-2';
--> 12345-01-02|00:00:00
-- Zeros beyond four digits go.
SELECT DATE '00001-1-2', TIME '00001-1-2';
--> 0001-01-02|00:00:00
-- No integer holds it.
SELECT DATE '99999999999999999999-1-2', TIME '99999999999999999999-1-2';
--> 99999999999999999999-01-02|00:00:00
-- One digit each.
SELECT DATE '1:2:3', TIME '1:2:3';
--> 0000-00-00|01:02:03
-- No clock.
SELECT DATE '99:99:99', TIME '99:99:99';
--> 0000-00-00|99:99:99
-- Two digits of each at most.
SELECT DATE '123:456:789', TIME '123:456:789';
--> 0000-00-00|23:45:78
-- No hour.
SELECT DATE ':5', TIME ':5';
--> 0000-00-00|00:05:00
-- No minute.
SELECT DATE '5:', TIME '5:';
--> 0000-00-00|05:00:00
-- Seconds alone.
SELECT DATE '::7', TIME '::7';
--> 0000-00-00|00:00:07
-- A blank before the minute.
SELECT DATE '1: 2:3', TIME '1: 2:3';
--> 0000-00-00|01:00:03
-- A blank behind the hour.
SELECT DATE '1 :2:3', TIME '1 :2:3';
--> 0000-00-00|00:02:03
-- The next colon, wherever it is.
SELECT DATE '12:34.5:6', TIME '12:34.5:6';
--> 0000-00-00|12:34:06
-- Date and time run into each other.
SELECT DATE '5-6:7', TIME '5-6:7';
--> 0005-06-00|06:07:00
-- Digits of another script are none.
SELECT DATE '١-1-1', TIME '١-1-1';
--> 0000-01-01|00:00:00
