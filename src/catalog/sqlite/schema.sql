-- The catalogue in SQLite. src/catalog/tables.cpp describes the tables, column by column; a test holds this file against
-- it. A change of either raises catalog::schemaVersion. Statements end with ";" at the end of a line. Tables, indexes
-- and the search are made in this order, indexes and the search after the rows of the first load.

CREATE TABLE model (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    path TEXT NOT NULL UNIQUE,
    size INTEGER,
    modified TEXT,
    hash TEXT,
    encoding TEXT,
    petal_version TEXT,
    reading TEXT,
    status TEXT NOT NULL,
    failure TEXT,
    losses INTEGER,
    damages INTEGER,
    documentation TEXT
);

CREATE TABLE unit (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    path TEXT NOT NULL,
    kind TEXT NOT NULL,
    found INTEGER,
    remark TEXT,
    size INTEGER,
    modified TEXT,
    hash TEXT
);

CREATE TABLE origin (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    source_encoding TEXT,
    source_format TEXT,
    source_path TEXT,
    source_kind TEXT,
    tool_vendor TEXT,
    tool_versions TEXT,
    tool_web TEXT,
    tool_methodology TEXT,
    tool_bridge_id TEXT
);

CREATE TABLE element (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    element_id TEXT NOT NULL,
    kind TEXT NOT NULL,
    qualified_name TEXT NOT NULL,
    owner INTEGER REFERENCES element (id),
    stereotype TEXT,
    documentation TEXT,
    file TEXT,
    line INTEGER,
    quid TEXT,
    words TEXT
);

CREATE TABLE type (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    kind TEXT NOT NULL,
    data_type TEXT,
    length INTEGER,
    scale INTEGER,
    user_defined INTEGER,
    physical_name TEXT,
    derived_from INTEGER REFERENCES type (id),
    meaning TEXT,
    class INTEGER REFERENCES class (id)
);

CREATE TABLE type_value (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    type INTEGER REFERENCES type (id),
    value TEXT,
    position INTEGER
);

CREATE TABLE class (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    kind TEXT NOT NULL,
    category TEXT,
    stereotype TEXT,
    is_abstract INTEGER,
    is_persistent INTEGER,
    space INTEGER,
    multiplicity TEXT,
    concurrency INTEGER
);

CREATE TABLE attribute (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    class INTEGER REFERENCES class (id),
    type INTEGER REFERENCES type (id),
    visibility TEXT,
    containment TEXT,
    is_static INTEGER,
    is_derived INTEGER,
    position INTEGER,
    initial_value TEXT
);

CREATE TABLE operation (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    class INTEGER REFERENCES class (id),
    return_type INTEGER REFERENCES type (id),
    visibility TEXT,
    concurrency INTEGER,
    is_friend INTEGER,
    is_static INTEGER,
    is_virtual INTEGER,
    semantics TEXT,
    precondition TEXT,
    postcondition TEXT
);

CREATE TABLE argument (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    operation INTEGER REFERENCES operation (id),
    class INTEGER REFERENCES class (id),
    type INTEGER REFERENCES type (id),
    position INTEGER,
    initial_value TEXT
);

CREATE TABLE association (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    is_aggregation INTEGER
);

CREATE TABLE role (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    association INTEGER REFERENCES association (id),
    class INTEGER REFERENCES class (id),
    multiplicity TEXT,
    is_aggregate INTEGER,
    is_navigable INTEGER,
    is_static INTEGER,
    is_friend INTEGER,
    is_source INTEGER,
    containment TEXT,
    position INTEGER
);

CREATE TABLE generalization (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    element INTEGER REFERENCES element (id),
    subtype INTEGER REFERENCES class (id),
    supertype INTEGER REFERENCES class (id),
    visibility TEXT,
    is_virtual INTEGER,
    is_friend INTEGER
);

CREATE TABLE realization (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    realization_class INTEGER REFERENCES class (id),
    specification_class INTEGER REFERENCES class (id)
);

CREATE TABLE dependency (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    client INTEGER REFERENCES class (id),
    supplier INTEGER REFERENCES class (id)
);

CREATE TABLE key (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL,
    class INTEGER REFERENCES class (id),
    kind TEXT NOT NULL,
    is_primary INTEGER,
    user_defined INTEGER,
    candidate_key INTEGER REFERENCES key (id)
);

CREATE TABLE key_attribute (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    key INTEGER REFERENCES key (id),
    attribute INTEGER REFERENCES attribute (id),
    position INTEGER
);

CREATE TABLE role_foreign_key (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    role INTEGER REFERENCES role (id),
    foreign_key INTEGER REFERENCES key (id)
);

CREATE TABLE role_name_map (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    foreign_key INTEGER REFERENCES key (id),
    source INTEGER REFERENCES attribute (id),
    destination INTEGER REFERENCES attribute (id)
);

CREATE TABLE diagram (
    id INTEGER PRIMARY KEY REFERENCES element (id),
    name TEXT NOT NULL
);

CREATE TABLE diagram_element (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    diagram INTEGER REFERENCES diagram (id),
    element INTEGER REFERENCES element (id),
    position INTEGER
);

CREATE TABLE note (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    element INTEGER REFERENCES element (id),
    text TEXT,
    position INTEGER
);

CREATE TABLE loss (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    kind TEXT NOT NULL,
    property TEXT,
    outcome TEXT,
    reason TEXT,
    detail TEXT,
    file TEXT,
    line INTEGER,
    "column" INTEGER
);

CREATE TABLE damage (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    text TEXT,
    file TEXT,
    line INTEGER,
    "column" INTEGER
);

CREATE TABLE source_object (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    model INTEGER REFERENCES model (id),
    parent INTEGER REFERENCES source_object (id),
    kind TEXT NOT NULL,
    element INTEGER REFERENCES element (id),
    outcome TEXT,
    quid TEXT,
    file TEXT,
    line INTEGER
);

CREATE TABLE source_property (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    object INTEGER REFERENCES source_object (id),
    value TEXT,
    outcome TEXT,
    line INTEGER
);

CREATE TABLE about (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL,
    "column" TEXT,
    text TEXT NOT NULL
);

CREATE TABLE guide (
    id INTEGER PRIMARY KEY,
    name TEXT NOT NULL UNIQUE,
    question TEXT NOT NULL,
    sql TEXT NOT NULL
);

CREATE INDEX unit_model ON unit (model);
CREATE INDEX origin_model ON origin (model);
CREATE INDEX element_model ON element (model);
CREATE INDEX element_owner ON element (owner);
CREATE INDEX element_name ON element (name);
CREATE INDEX element_element_id ON element (element_id);
CREATE INDEX type_derived_from ON type (derived_from);
CREATE INDEX type_class ON type (class);
CREATE INDEX type_value_type ON type_value (type);
CREATE INDEX attribute_class ON attribute (class);
CREATE INDEX attribute_type ON attribute (type);
CREATE INDEX operation_class ON operation (class);
CREATE INDEX operation_return_type ON operation (return_type);
CREATE INDEX argument_operation ON argument (operation);
CREATE INDEX argument_class ON argument (class);
CREATE INDEX argument_type ON argument (type);
CREATE INDEX role_association ON role (association);
CREATE INDEX role_class ON role (class);
CREATE INDEX generalization_element ON generalization (element);
CREATE INDEX generalization_subtype ON generalization (subtype);
CREATE INDEX generalization_supertype ON generalization (supertype);
CREATE INDEX realization_realization_class ON realization (realization_class);
CREATE INDEX realization_specification_class ON realization (specification_class);
CREATE INDEX dependency_client ON dependency (client);
CREATE INDEX dependency_supplier ON dependency (supplier);
CREATE INDEX key_class ON key (class);
CREATE INDEX key_candidate_key ON key (candidate_key);
CREATE INDEX key_attribute_key ON key_attribute (key);
CREATE INDEX key_attribute_attribute ON key_attribute (attribute);
CREATE INDEX role_foreign_key_role ON role_foreign_key (role);
CREATE INDEX role_foreign_key_foreign_key ON role_foreign_key (foreign_key);
CREATE INDEX role_name_map_foreign_key ON role_name_map (foreign_key);
CREATE INDEX role_name_map_source ON role_name_map (source);
CREATE INDEX role_name_map_destination ON role_name_map (destination);
CREATE INDEX diagram_element_diagram ON diagram_element (diagram);
CREATE INDEX diagram_element_element ON diagram_element (element);
CREATE INDEX note_element ON note (element);
CREATE INDEX loss_model ON loss (model);
CREATE INDEX damage_model ON damage (model);
CREATE INDEX source_object_model ON source_object (model);
CREATE INDEX source_object_parent ON source_object (parent);
CREATE INDEX source_object_element ON source_object (element);
CREATE INDEX source_property_object ON source_property (object);

CREATE VIRTUAL TABLE search USING fts5 (
    name, documentation, words, content = 'element', content_rowid = 'id'
);
