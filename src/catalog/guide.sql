-- The guide: useful questions, each a line "-- NAME: QUESTION" and its SQL, which SQLite and PostgreSQL both take.
-- Statements end with ";" at the end of a line.

-- models: Which models are there, how large are they, and what became of them?
SELECT model.path, model.status, model.size, count(class.id) AS classes, model.losses, model.damages, model.failure
FROM model
LEFT JOIN element ON element.model = model.id AND element.kind = 'class'
LEFT JOIN class ON class.id = element.id
GROUP BY model.id, model.path, model.status, model.size, model.losses, model.damages, model.failure
ORDER BY classes DESC, model.path;

-- totals: How many rows does each table have?
SELECT * FROM estate_totals;

-- info: Which version and encoding does each model have, who wrote it, and how much is in its files?
SELECT model.path,
    (SELECT min(value) FROM source_property WHERE object = head.id AND source_property.name = 'version') AS version,
    (SELECT min(value) FROM source_property WHERE object = head.id AND source_property.name = '_written') AS written_by,
    model.encoding,
    (SELECT count(*) FROM source_object WHERE source_object.model = model.id) AS objects,
    (SELECT count(*) FROM source_object
        WHERE source_object.model = model.id AND substr(kind, length(kind) - 6) = 'Diagram') AS diagrams,
    (SELECT count(*) FROM unit WHERE unit.model = model.id) AS units,
    model.damages
FROM model
LEFT JOIN source_object AS head ON head.id = (
    SELECT min(top.id) FROM source_object AS top
    WHERE top.model = model.id AND top.kind = 'Petal' AND top.file IS NULL
)
ORDER BY model.path;

-- objects: How many objects of each kind are in each file, and what became of them?
SELECT model.path AS model, source_object.file AS unit, source_object.kind, count(*) AS objects,
    sum(CASE WHEN source_object.outcome = 'imported' THEN 1 ELSE 0 END) AS imported,
    sum(CASE WHEN source_object.outcome = 'changed' THEN 1 ELSE 0 END) AS changed,
    sum(CASE WHEN source_object.outcome = 'dropped' THEN 1 ELSE 0 END) AS dropped
FROM source_object JOIN model ON model.id = source_object.model
GROUP BY model.id, model.path, source_object.file, source_object.kind
ORDER BY model.path, source_object.file NULLS FIRST, source_object.kind;

-- diagrams: Which diagrams of all kinds do the files have?
SELECT model.path AS model, source_object.kind, source_object.name, source_object.file AS unit, source_object.line
FROM source_object JOIN model ON model.id = source_object.model
WHERE substr(source_object.kind, length(source_object.kind) - 6) = 'Diagram'
ORDER BY model.path, source_object.id;

-- damages: Which errors in the notation do the files have, and where?
SELECT model.path AS model, damage.file AS unit, damage.line, damage."column", damage.name AS damage, damage.text
FROM damage JOIN model ON model.id = damage.model
ORDER BY model.path, damage.id;

-- units: Which files is each model kept in, and were they found?
SELECT model.path AS model, unit.kind, unit.name, unit.path AS unit, unit.found, unit.remark
FROM unit JOIN model ON model.id = unit.model
ORDER BY model.path, unit.path, unit.id;

-- report: What became of each file, and how much of it was dropped or lost?
SELECT model.path, model.status, model.failure,
    (SELECT count(*) FROM element WHERE element.model = model.id) AS elements,
    (SELECT count(*) FROM source_object WHERE source_object.model = model.id AND outcome = 'dropped') AS dropped,
    model.losses, model.damages,
    (SELECT count(*) FROM unit WHERE unit.model = model.id AND unit.found = 1) AS units_found,
    (SELECT count(*) FROM unit WHERE unit.model = model.id AND unit.found = 0) AS units_missing
FROM model
ORDER BY model.path;

-- ledger: What was lost, where, and why?
SELECT model.path AS model, loss.file AS unit, loss.line, loss."column", loss.kind, loss.name, loss.property,
    loss.outcome, loss.reason, loss.detail
FROM loss JOIN model ON model.id = loss.model
ORDER BY model.path, loss.file NULLS FIRST, loss.line, loss."column", loss.property NULLS FIRST, loss.id;

-- failed-models: Which models could not be read, and why?
SELECT path, failure FROM model WHERE status = 'failed' ORDER BY path;

-- copied-models: Which model files are copies of each other?
SELECT hash, path FROM model
WHERE hash IN (SELECT hash FROM model GROUP BY hash HAVING count(*) > 1)
ORDER BY hash, path;

-- missing-units: Which files of models were not found?
SELECT model.path AS model, unit.name, unit.path AS unit, unit.remark
FROM unit JOIN model ON model.id = unit.model
WHERE unit.found = 0
ORDER BY model.path, unit.path;

-- losses: What was lost most often in the import, and why?
SELECT kind, property, outcome, reason, min(detail) AS example, count(*) AS times, count(DISTINCT model) AS models
FROM loss
GROUP BY kind, property, outcome, reason
ORDER BY times DESC, kind, property NULLS FIRST, outcome, reason
LIMIT 50;

-- largest-classes: Which classes have the most attributes and operations?
SELECT class, model, attributes, operations
FROM (
    SELECT class.id, class.name AS class, model.path AS model,
        (SELECT count(*) FROM attribute WHERE attribute.class = class.id) AS attributes,
        (SELECT count(*) FROM operation WHERE operation.class = class.id) AS operations
    FROM class
    JOIN element ON element.id = class.id
    JOIN model ON model.id = element.model
) AS counted
ORDER BY attributes + operations DESC, class, id
LIMIT 50;

-- most-used-classes: Which classes do most other classes of their model use?
SELECT used_name AS class, model.path AS model, count(DISTINCT class_references.class) AS users
FROM class_references
JOIN element ON element.id = class_references.used
JOIN model ON model.id = element.model
WHERE class_references.class <> class_references.used
GROUP BY class_references.used, used_name, model.path
ORDER BY users DESC, used_name, model.path
LIMIT 50;

-- lone-classes: Which classes neither use another class nor are used by one?
SELECT class.name, model.path AS model
FROM class
JOIN element ON element.id = class.id
JOIN model ON model.id = element.model
WHERE class.id NOT IN (SELECT used FROM class_references) AND class.id NOT IN (SELECT class FROM class_references)
ORDER BY model.path, class.name, class.id;

-- documented-share: How much of each model is documented?
SELECT model.path, count(*) AS classes,
    sum(CASE WHEN element.documentation IS NOT NULL THEN 1 ELSE 0 END) AS documented,
    100 * sum(CASE WHEN element.documentation IS NOT NULL THEN 1 ELSE 0 END) / count(*) AS percent
FROM element JOIN model ON model.id = element.model
WHERE element.kind = 'class'
GROUP BY model.id, model.path
ORDER BY percent DESC, classes DESC, model.path;

-- stereotypes: Which stereotypes do classes have, and what does petal take them for?
SELECT stereotype, kind, count(*) AS classes
FROM class
WHERE stereotype IS NOT NULL
GROUP BY stereotype, kind
ORDER BY classes DESC, stereotype;

-- deepest-inheritance: Which classes have the longest way up to an ancestor?
SELECT inheritance.class_name AS class, inheritance.ancestor_name AS ancestor, inheritance.distance,
    model.path AS model
FROM inheritance
JOIN element ON element.id = inheritance.class
JOIN model ON model.id = element.model
ORDER BY inheritance.distance DESC, inheritance.class_name, inheritance.ancestor_name, model.path
LIMIT 50;

-- inheritance-circles: Which classes inherit from themselves?
SELECT inheritance.class_name AS class, inheritance.distance AS steps, model.path AS model
FROM inheritance
JOIN element ON element.id = inheritance.class
JOIN model ON model.id = element.model
WHERE inheritance.class = inheritance.ancestor
ORDER BY model.path, inheritance.class_name, inheritance.class;

-- interfaces: Which interfaces do most classes realize?
SELECT class.name AS interface, model.path AS model, count(DISTINCT realization.realization_class) AS classes
FROM realization
JOIN class ON class.id = realization.specification_class
JOIN element ON element.id = class.id
JOIN model ON model.id = element.model
GROUP BY class.id, class.name, model.path
ORDER BY classes DESC, class.name, model.path
LIMIT 50;

-- unresolved-types: Which types of attributes, operations and arguments mean nothing that is known?
SELECT name, users, models FROM unresolved_types ORDER BY users DESC, name LIMIT 100;

-- type-users: What has which type? Add WHERE type.name = '...' for the type that is to go.
SELECT type.name AS type, element.kind, element.qualified_name AS used_by, model.path AS model, element.file,
    element.line
FROM (
    SELECT id, type FROM attribute
    UNION ALL SELECT id, return_type FROM operation
    UNION ALL SELECT id, type FROM argument
) AS uses
JOIN type ON type.id = uses.type
JOIN element ON element.id = uses.id
JOIN model ON model.id = element.model
ORDER BY type.name, model.path, element.qualified_name, uses.id;

-- duplicate-classes: Which classes do several models have?
SELECT name, models, classes FROM duplicate_classes ORDER BY models DESC, name LIMIT 100;

-- differing-attributes: Which attributes of classes of the same name have different types in different models?
SELECT class.name AS class, attribute.name AS attribute, count(DISTINCT type.name) AS types, min(type.name) AS one_type,
    max(type.name) AS other_type, count(DISTINCT element.model) AS models
FROM attribute
JOIN element ON element.id = attribute.id
JOIN class ON class.id = attribute.class
JOIN type ON type.id = attribute.type
GROUP BY class.name, attribute.name
HAVING count(DISTINCT type.name) > 1 AND count(DISTINCT element.model) > 1
ORDER BY models DESC, class.name, attribute.name
LIMIT 100;

-- vague-associations: How many associations of each model lack a multiplicity at one of their ends?
SELECT model.path, count(*) AS associations,
    sum(CASE WHEN EXISTS (
        SELECT 1 FROM role WHERE role.association = association.id AND role.multiplicity IS NULL
    ) THEN 1 ELSE 0 END) AS vague
FROM association
JOIN element ON element.id = association.id
JOIN model ON model.id = element.model
GROUP BY model.id, model.path
ORDER BY vague DESC, model.path;

-- persistent-classes: Which classes are persistent, and what is their primary key?
SELECT class.name AS class, model.path AS model, key.name AS primary_key, key_attribute.name AS attribute
FROM class
JOIN element ON element.id = class.id
JOIN model ON model.id = element.model
LEFT JOIN key ON key.class = class.id AND key.is_primary = 1
LEFT JOIN key_attribute ON key_attribute.key = key.id
WHERE class.is_persistent = 1
ORDER BY model.path, class.name, class.id, key_attribute.position;

-- enumerations: Which enumerations are there, and what are their values?
SELECT class.name AS enumeration, model.path AS model, attribute.name AS value, attribute.initial_value
FROM class
JOIN element ON element.id = class.id
JOIN model ON model.id = element.model
LEFT JOIN attribute ON attribute.class = class.id
WHERE class.kind = 'enumeration'
ORDER BY model.path, class.name, class.id, attribute.position, attribute.name;

-- largest-diagrams: Which class diagrams show the most?
SELECT diagram.name, element.qualified_name, model.path AS model, count(*) AS elements
FROM diagram_element
JOIN diagram ON diagram.id = diagram_element.diagram
JOIN element ON element.id = diagram.id
JOIN model ON model.id = element.model
GROUP BY diagram.id, diagram.name, element.qualified_name, model.path
ORDER BY elements DESC, element.qualified_name, model.path
LIMIT 50;

-- not-imported: What is in the files that is not in the imported models?
SELECT kind, count(*) AS objects, count(DISTINCT model) AS models
FROM source_object
WHERE outcome = 'dropped'
GROUP BY kind
ORDER BY objects DESC, kind;

-- use-cases: Which use cases do the files have?
SELECT source_object.name AS use_case, around.name AS package, model.path AS model, source_object.file,
    source_object.line, documentation.value AS documentation
FROM source_object
JOIN model ON model.id = source_object.model
LEFT JOIN source_object AS around ON around.id = source_object.parent
LEFT JOIN source_property AS documentation
    ON documentation.object = source_object.id AND documentation.name = 'documentation'
WHERE source_object.kind = 'UseCase'
ORDER BY model.path, source_object.id;

-- tool-properties: Which properties of tools are set most often?
SELECT tool.value AS tool, property.value AS property, count(*) AS times, count(DISTINCT source_object.model) AS models
FROM source_object
JOIN source_property AS tool ON tool.object = source_object.id AND tool.name = 'tool'
JOIN source_property AS property ON property.object = source_object.id AND property.name = 'name'
WHERE source_object.kind = 'Attribute'
GROUP BY tool.value, property.value
ORDER BY times DESC, tool.value, property.value
LIMIT 50;
