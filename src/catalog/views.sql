-- The views of a catalogue, in SQL that SQLite and PostgreSQL both take. Statements end with ";" at the end of a line.

CREATE VIEW attributes AS
SELECT attribute.id, attribute.name, model.path AS model, package.qualified_name AS package, class.name AS class,
    type.name AS type, attribute.visibility, attribute.initial_value, attribute.is_static, attribute.is_derived,
    attribute.containment, element.documentation, attribute.class AS class_id, attribute.type AS type_id
FROM attribute
JOIN element ON element.id = attribute.id
JOIN model ON model.id = element.model
LEFT JOIN class ON class.id = attribute.class
LEFT JOIN element AS class_element ON class_element.id = attribute.class
LEFT JOIN element AS package ON package.id = class_element.owner
LEFT JOIN type ON type.id = attribute.type;

CREATE VIEW associations AS
SELECT association.id, association.name, model.path AS model, package.qualified_name AS package,
    first_class.name AS first_class, first.name AS first_role, first.multiplicity AS first_multiplicity,
    second_class.name AS second_class, second.name AS second_role, second.multiplicity AS second_multiplicity,
    association.is_aggregation, first.is_navigable AS first_is_navigable, second.is_navigable AS second_is_navigable,
    element.documentation, first.class AS first_class_id, second.class AS second_class_id
FROM association
JOIN element ON element.id = association.id
JOIN model ON model.id = element.model
LEFT JOIN element AS package ON package.id = element.owner
LEFT JOIN role AS first ON first.association = association.id AND first.position = 1
LEFT JOIN role AS second ON second.association = association.id AND second.position = 2
LEFT JOIN class AS first_class ON first_class.id = first.class
LEFT JOIN class AS second_class ON second_class.id = second.class;

CREATE VIEW class_references AS
SELECT pair.class, pair.used, pair."by", class.name AS class_name, used.name AS used_name
FROM (
    SELECT attribute.class, type.class AS used, 'attribute' AS "by"
    FROM attribute JOIN type ON type.id = attribute.type
    UNION
    SELECT operation.class, type.class, 'operation'
    FROM operation JOIN type ON type.id = operation.return_type
    UNION
    SELECT coalesce(operation.class, argument.class), type.class, 'argument'
    FROM argument JOIN type ON type.id = argument.type LEFT JOIN operation ON operation.id = argument.operation
    UNION
    SELECT near.class, far.class, 'association'
    FROM role AS near JOIN role AS far ON far.association = near.association AND far.id <> near.id
    WHERE far.is_navigable = 1 OR near.is_navigable = 0
    UNION
    SELECT subtype, supertype, 'generalization' FROM generalization
    UNION
    SELECT realization_class, specification_class, 'realization' FROM realization
    UNION
    SELECT client, supplier, 'dependency' FROM dependency
) AS pair
JOIN class ON class.id = pair.class
JOIN class AS used ON used.id = pair.used;

CREATE VIEW inheritance AS
WITH RECURSIVE step (class, ancestor, distance) AS (
    SELECT subtype, supertype, 1 FROM generalization
    UNION
    SELECT step.class, generalization.supertype, step.distance + 1
    FROM step JOIN generalization ON generalization.subtype = step.ancestor
    WHERE step.distance < 100
)
SELECT step.class, step.ancestor, min(step.distance) AS distance, class.name AS class_name, ancestor.name AS ancestor_name
FROM step
JOIN class ON class.id = step.class
JOIN class AS ancestor ON ancestor.id = step.ancestor
GROUP BY step.class, step.ancestor, class.name, ancestor.name;

CREATE VIEW unresolved_types AS
SELECT type.name, count(*) AS users, count(DISTINCT element.model) AS models
FROM type
JOIN element ON element.id = type.id
JOIN (
    SELECT type FROM attribute
    UNION ALL SELECT return_type FROM operation
    UNION ALL SELECT type FROM argument
) AS use ON use.type = type.id
WHERE type.meaning = 'unknown'
GROUP BY type.name;

CREATE VIEW duplicate_classes AS
SELECT class.name, count(DISTINCT element.model) AS models, count(*) AS classes
FROM class
JOIN element ON element.id = class.id
GROUP BY class.name
HAVING count(DISTINCT element.model) > 1;

CREATE VIEW estate_totals AS
SELECT (SELECT count(*) FROM model) AS model,
    (SELECT count(*) FROM unit) AS unit,
    (SELECT count(*) FROM origin) AS origin,
    (SELECT count(*) FROM element) AS element,
    (SELECT count(*) FROM type) AS type,
    (SELECT count(*) FROM type_value) AS type_value,
    (SELECT count(*) FROM class) AS class,
    (SELECT count(*) FROM attribute) AS attribute,
    (SELECT count(*) FROM operation) AS operation,
    (SELECT count(*) FROM argument) AS argument,
    (SELECT count(*) FROM association) AS association,
    (SELECT count(*) FROM role) AS role,
    (SELECT count(*) FROM generalization) AS generalization,
    (SELECT count(*) FROM realization) AS realization,
    (SELECT count(*) FROM dependency) AS dependency,
    (SELECT count(*) FROM key) AS key,
    (SELECT count(*) FROM key_attribute) AS key_attribute,
    (SELECT count(*) FROM role_foreign_key) AS role_foreign_key,
    (SELECT count(*) FROM role_name_map) AS role_name_map,
    (SELECT count(*) FROM diagram) AS diagram,
    (SELECT count(*) FROM diagram_element) AS diagram_element,
    (SELECT count(*) FROM note) AS note,
    (SELECT count(*) FROM loss) AS loss,
    (SELECT count(*) FROM damage) AS damage,
    (SELECT count(*) FROM source_object) AS source_object,
    (SELECT count(*) FROM source_property) AS source_property;
