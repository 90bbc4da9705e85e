CREATE TABLE d (i integer, d double, s string, b boolean, day date);
INSERT INTO d VALUES (2, 1.5, 'b', TRUE, '2020-01-01');
INSERT INTO d VALUES (1, 1.5, 'a', FALSE, '2020-01-01');
INSERT INTO d VALUES (2, 2.5, 'b', TRUE, '2020-01-02');
INSERT INTO d VALUES (1, 1.5, 'A', TRUE, '2020-01-01');
INSERT INTO d VALUES (2, 1.5, 'b', TRUE, '2020-01-01');

-- The first of equal rows stays.
SELECT DISTINCT i FROM d;
--> 2
--> 1
SELECT UNIQUE d FROM d;
--> 1.5
--> 2.5
SELECT DISTINCT s FROM d;
--> b
--> a
--> A
SELECT DISTINCT b FROM d;
--> TRUE
--> FALSE
SELECT DISTINCT i, d FROM d;
--> 2|1.5
--> 1|1.5
--> 2|2.5
SELECT DISTINCT i, d, s, b FROM d;
--> 2|1.5|b|TRUE
--> 1|1.5|a|FALSE
--> 2|2.5|b|TRUE
--> 1|1.5|A|TRUE
SELECT DISTINCT UPPER(s) FROM d;
--> B
--> A
SELECT DISTINCT 1 FROM d;
--> 1
SELECT ALL 1 FROM d WHERE i = 1;
--> 1
--> 1
-- Row numbers make every row another.
SELECT DISTINCT * FROM d WHERE i = 1;
--> 2|1|1.5|a|FALSE|2020-01-01
--> 4|1|1.5|A|TRUE|2020-01-01
-- A Date never equals a Date, so none is left out.
SELECT DISTINCT day FROM d;
--> 2020-01-01
--> 2020-01-01
--> 2020-01-02
--> 2020-01-01
--> 2020-01-01
SELECT DISTINCT ''+day FROM d;
--> DATE 2020-01-01
--> DATE 2020-01-02
-- NULL equals NULL.
SELECT DISTINCT NULL FROM d;
--> NULL
SELECT DISTINCT 1/(i-2) FROM d;
--> NULL
--> -1
SELECT DISTINCT i FROM d ORDER BY i;
--> 1
--> 2
SELECT DISTINCT i FROM d WHERE i > 5;
-- Of a join.
SELECT DISTINCT x.i, y.i FROM d x, d y WHERE x.i < y.i;
--> 1|2
