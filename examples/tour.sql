-- A tour of Vela with the tables of this folder. scripts/demo imports them and shows each statement with its result.
-- Paragraphs are independent of each other: each runs in a session of its own, which commits when it ends well.

-- What there is: tables, and what one of them looks like.
.tables
.schema countries

-- One table, a condition, an order: countries with more than 100 million people.
SELECT name, capital, population FROM countries WHERE population > 100000000 ORDER BY population DESC;

-- LIKE: "%" stands for any text. Countries of Europe that end in "land".
SELECT name, capital FROM countries WHERE continent = 'EU' AND name LIKE '%land' ORDER BY name;

-- And "_" for one letter. Countries with names of four.
SELECT name FROM countries WHERE name LIKE '____' ORDER BY name;

-- Arithmetic and text functions. Dividing integers gives an integer.
SELECT UPPER(name) AS country, CHAR_LENGTH(name) AS letters, population / area_km2 AS people_per_km2
FROM countries
WHERE area_km2 > 0 AND population / area_km2 > 1000
ORDER BY people_per_km2 DESC;

-- A join of three tables: large airports higher than 6,000 feet, where they are, and how high in metres.
SELECT a.name AS airport, r.name AS region, c.name AS country, a.elevation_ft * 3048 / 10000 AS metres
FROM airports a, regions r, countries c
WHERE a.size = 'large' AND a.elevation_ft > 6000 AND a.region = r.code AND a.country = c.code
ORDER BY metres DESC;

-- A table joined with itself: the neighbours of Germany, longest border first.
SELECT n.name AS neighbour, n.capital, b.length_km
FROM countries c, borders b, countries n
WHERE c.name = 'Germany' AND b.country = c.code AND b.neighbour = n.code
ORDER BY length_km DESC;

-- Groups: countries with 75 or more airports that airlines fly to.
SELECT c.name AS country, COUNT(*) AS airports, MAX(a.elevation_ft) AS highest_ft
FROM airports a, countries c
WHERE a.scheduled = TRUE AND a.country = c.code
GROUP BY c.name
HAVING COUNT(*) >= 75
ORDER BY airports DESC;

-- Aggregates by continent. SUM counts in integers as long as they fit 32 bits, and in doubles beyond.
SELECT continent, COUNT(*) AS countries, SUM(population) AS people, AVG(area_km2) AS mean_area, MIN(independence) AS oldest
FROM countries
WHERE population > 0 AND independence > DATE '1000-01-01'
GROUP BY continent
ORDER BY continent;

-- Dates compare as dates: the countries that became independent since 1991, the latest first.
SELECT name, continent, independence FROM countries
WHERE independence >= DATE '1991-10-01'
ORDER BY independence DESC, name;

-- Points in time: when do clocks change in more than two time zones at once, and for how many?
SELECT changes_at AS moment_in_utc, COUNT(*) AS zones, MIN(zone) AS for_example
FROM clock_changes
WHERE changes_at >= TIMESTAMP '2026-01-01 00:00:00' AND changes_at < TIMESTAMP '2027-01-01 00:00:00'
GROUP BY changes_at
HAVING COUNT(*) > 2
ORDER BY moment_in_utc;

-- The same against today's date.
SELECT CURRENT_DATE AS today, COUNT(*) AS changes_to_come FROM clock_changes WHERE changes_at > CURRENT_DATE;

-- DISTINCT: each row once. The countries to which ISO 3166 gives the stations of Antarctica.
SELECT DISTINCT c.name AS country, z.zone FROM zones z, countries c
WHERE z.country = c.code AND z.zone LIKE 'Antarctica/%' ORDER BY zone;

-- A table made from a query. A date reads as "DATE 1957-08-31" in text functions: its decade is the digits 6 to 8.
CREATE TABLE decades (decade string, country string);
INSERT INTO decades SELECT SUBSTRING(independence FROM 6 FOR 3), name FROM countries
WHERE independence >= DATE '1940-01-01';
COMMIT;
SELECT decade, COUNT(*) AS new_countries, MIN(country) AS first_by_name, MAX(country) AS last_by_name
FROM decades GROUP BY decade ORDER BY decade;
DROP TABLE decades;

-- An index makes finding rows by a column quick. It changes no result.
CREATE INDEX by_city ON airports (city);
SELECT ident, iata, name FROM airports WHERE city = 'London' ORDER BY ident;

-- Changes that stay: three countries are called otherwise since the data was made.
UPDATE countries SET name = 'Czechia' WHERE code = 'CZ';
UPDATE countries SET name = 'Eswatini' WHERE code = 'SZ';
UPDATE countries SET name = 'North Macedonia' WHERE code = 'MK';
COMMIT;
SELECT code, name, capital FROM countries WHERE code = 'CZ' OR code = 'SZ' OR code = 'MK' ORDER BY name;

-- Changes are pending until COMMIT, or the end of the session. ROLLBACK undoes all that are pending.
SELECT COUNT(*) AS airports_at_first, MAX(elevation_ft) AS highest_ft FROM airports;
DELETE FROM airports WHERE scheduled = FALSE;
UPDATE airports SET elevation_ft = elevation_ft + 1000 WHERE country = 'NL';
SELECT COUNT(*) AS airports_after_delete, MAX(elevation_ft) AS highest_ft FROM airports;
SELECT name, elevation_ft AS feet_after_update FROM airports WHERE city = 'Amsterdam';
ROLLBACK;
SELECT COUNT(*) AS airports_after_rollback, MAX(elevation_ft) AS highest_ft FROM airports;
SELECT name, elevation_ft AS feet_after_rollback FROM airports WHERE city = 'Amsterdam';
