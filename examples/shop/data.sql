-- The shop of the example page: one category of 24 lamps, with what stands around it.

CREATE TABLE setting (
    name  TEXT PRIMARY KEY,
    value TEXT NOT NULL
);
INSERT INTO setting VALUES
    ('name',     'Tallow & Wick'),
    ('tagline',  'Good light, made slowly'),
    ('notice',   'Free delivery over €75 · 30 days to change your mind'),
    ('legal',    '© 2026 Tallow & Wick · Prices in €, VAT included'),
    ('currency', 'EUR'),
    ('promo',    'promo_autumn.tpl');

CREATE TABLE currency (
    code   TEXT PRIMARY KEY,
    symbol TEXT NOT NULL
);
INSERT INTO currency VALUES ('EUR', '€'), ('GBP', '£'), ('USD', '$');

CREATE TABLE category (
    id        INTEGER PRIMARY KEY,
    parent_id INTEGER REFERENCES category,
    name      TEXT NOT NULL,
    listed    INTEGER NOT NULL DEFAULT 0,
    tint      TEXT,
    intro     TEXT
);
INSERT INTO category VALUES
    (1,  NULL, 'Home',              0, NULL, NULL),
    (2,  1,    'Lighting',        118, NULL, NULL),
    (3,  1,    'Furniture',        84, NULL, NULL),
    (4,  1,    'Textiles',         61, NULL, NULL),
    (5,  1,    'Kitchen & Table',  97, NULL, NULL),
    (6,  1,    'Journal',           0, NULL, NULL),
    (20, 2,    'Lamps for evenings', 62, '#ece6dd',
     'Lamps for the hours when the ceiling light is <em>too much</em>: warm bulbs, honest materials, switches that are nice to touch.'),
    (21, 2,    'Pendants',         38, NULL, NULL),
    (22, 2,    'Bulbs & Parts',    18, NULL, NULL);

CREATE TABLE shape (
    key  TEXT,
    part INTEGER,
    fill TEXT NOT NULL,
    d    TEXT NOT NULL,
    PRIMARY KEY (key, part)
);
-- fill: a = the lamp's shade, b = its body, w = lit glass, g = light on its surroundings, h = highlight, k = a dark line
INSERT INTO shape VALUES
    ('dome', 1, 'g', 'M42 92 14 160h132L118 92z'),
    ('dome', 2, 'b', 'M79 0h2v44h-2zM73 42h14v10H73z'),
    ('dome', 3, 'a', 'M34 92a46 43 0 0 1 92 0z'),
    ('dome', 4, 'w', 'M34 92a46 7 0 0 0 92 0 46 7 0 0 0-92 0z'),
    ('dome', 5, 'h', 'M46 84c2-14 9-22 19-26-8 8-11 16-12 26z'),
    ('globe', 1, 'g', 'M80 22a62 62 0 1 1 0 124 62 62 0 1 1 0-124z'),
    ('globe', 2, 'b', 'M79 0h2v42h-2zM70 40h20v9H70z'),
    ('globe', 3, 'a', 'M80 47a38 38 0 1 1 0 76 38 38 0 1 1 0-76z'),
    ('globe', 4, 'h', 'M52 82c1-15 11-25 25-27-10 6-15 15-16 27z'),
    ('cone', 1, 'g', 'M80 22a60 60 0 1 1 0 120 60 60 0 1 1 0-120z'),
    ('cone', 2, 'b', 'M77 84h6v40h21a4 4 0 0 1 4 4v10H52v-10a4 4 0 0 1 4-4h21z'),
    ('cone', 3, 'a', 'M60 34h40l22 52H38z'),
    ('cone', 4, 'h', 'M64 40h8L58 80H48z'),
    ('mushroom', 1, 'g', 'M80 30a60 60 0 1 1 0 120 60 60 0 1 1 0-120z'),
    ('mushroom', 2, 'b', 'M64 76h32c0 24 5 42 12 62H52c7-20 12-38 12-62z'),
    ('mushroom', 3, 'a', 'M32 80c0-30 22-46 48-46s48 16 48 46c-12 6-84 6-96 0z'),
    ('mushroom', 4, 'h', 'M42 74c2-16 10-26 24-31-9 8-13 18-14 31z'),
    ('arc', 1, 'g', 'M94 70 74 138h84L138 70z'),
    ('arc', 2, 'b', 'M44 128V66c0-62 64-66 74-22l-4 1C104 12 48 18 48 66v62h14a4 4 0 0 1 4 4v6H26v-6a4 4 0 0 1 4-4z'),
    ('arc', 3, 'a', 'M90 70a26 27 0 0 1 52 0z'),
    ('arc', 4, 'w', 'M90 70a26 4.5 0 0 0 52 0 26 4.5 0 0 0-52 0z'),
    ('lantern', 1, 'g', 'M80 40a58 58 0 1 1 0 116 58 58 0 1 1 0-116z'),
    ('lantern', 2, 'w', 'M56 64h48l4 58H52z'),
    ('lantern', 3, 'b', 'M80 82c9 10 12 17 12 24a12 12 0 0 1-24 0c0-7 3-14 12-24z'),
    ('lantern', 4, 'a', 'M48 64c0-12 14-20 26-22h12c12 2 26 10 26 22zM46 122h68v6a10 10 0 0 1-10 10H56a10 10 0 0 1-10-10zM55 64h5l-4 58h-5zM100 64h5l4 58h-5z'),
    ('lantern', 5, 'k', 'M58 46a22 26 0 0 1 44 0h-3a19 23 0 0 0-38 0z'),
    ('desk', 1, 'g', 'M86 82l42 56H46z'),
    ('desk', 2, 'b', 'M60 130 40 82l4-2 21 50h13a4 4 0 0 1 4 4v4H42v-4a4 4 0 0 1 4-4zM40 78l50-40 3 4-50 40z'),
    ('desk', 3, 'a', 'M42 74a7 7 0 1 1 0 14 7 7 0 1 1 0-14zM84 34l10-8c6-4 12-2 15 3l20 31-49 26z'),
    ('desk', 4, 'w', 'M80 86c10 5 44-12 49-26-14-2-46 14-49 26z'),
    ('paper', 1, 'g', 'M80 18a66 66 0 1 1 0 132 66 66 0 1 1 0-132z'),
    ('paper', 2, 'b', 'M79 0h2v38h-2zM68 36h24v6H68zM70 128h20v5H70z'),
    ('paper', 3, 'a', 'M68 40h24c26 4 40 22 40 45s-14 41-40 45H68c-26-4-40-22-40-45s14-41 40-45z'),
    ('paper', 4, 'k', 'M43 57q37 8 74 0v1.5q-37 8-74 0zM32 76q48 8 96 0v1.5q-48 8-96 0zM32 96q48 8 96 0v1.5q-48 8-96 0zM43 115q37 8 74 0v1.5q-37 8-74 0z');

CREATE TABLE product (
    id        INTEGER PRIMARY KEY,
    name      TEXT NOT NULL,
    maker     TEXT,
    shape     TEXT NOT NULL,
    shade     TEXT NOT NULL,
    body      TEXT NOT NULL,
    tint      TEXT,
    kind      TEXT NOT NULL,
    colour    TEXT NOT NULL,
    material  TEXT NOT NULL,
    cents     INTEGER NOT NULL,
    old_cents INTEGER,
    stock     INTEGER NOT NULL,
    badge     TEXT,
    rating    REAL,
    reviews   INTEGER NOT NULL DEFAULT 0
);
INSERT INTO product VALUES
    (101, 'Söder Dome',              NULL,                'dome',     '#c9622f', '#4a3a30', '#f6e5d8', 'pendant', 'clay',  'metal',   12900, 16900, 14, NULL,         4.7, 132),
    (102, 'Morel',                   'Studio Öhm',        'mushroom', '#e9d9bd', '#b98b57', '#efe6d6', 'table',   'sand',  'ceramic',  8900, NULL,  22, 'bestseller', 4.9, 418),
    (103, 'Fisherman''s Lantern',    NULL,                'lantern',  '#2f4a52', '#e39a3b', '#dce6e6', 'table',   'sea',   'metal',    6450, NULL,   8, NULL,         4.4,  57),
    (104, 'Long Reach',              NULL,                'arc',      '#3b3a38', '#8a6a45', NULL     , 'floor',   'soot',  'metal',   21900, NULL,   5, 'new',        4.0,   3),
    (105, '"Little Moon" Globe',     'Glass & Sons',      'globe',    '#f6edd9', '#7d6a55', '#e4e0ea', 'pendant', 'sand',  'glass',   14900, NULL,  17, 'bestseller', 4.8, 265),
    (106, 'Clerk',                   NULL,                'desk',     '#55705a', '#5b4c3d', '#e2eae0', 'desk',    'moss',  'metal',    7900,  9900, 31, NULL,         4.6,  98),
    (107, 'Pleat',                   'Fold & Crease',     'cone',     '#efc98b', '#8c5a3c', '#f7ecd9', 'table',   'sand',  'paper',    5900, NULL,   1, NULL,         4.3,  41),
    (108, 'Hinoki Cloud',            'Fold & Crease',     'paper',    '#faf3e4', '#5b4636', '#eee8dc', 'pendant', 'sand',  'paper',    4900, NULL,  40, NULL,         4.5, 176),
    (109, 'Morel, Oxblood',          'Studio Öhm',        'mushroom', '#8f3a34', '#d7b48a', '#f1ddd8', 'table',   'clay',  'ceramic',  8900, NULL,   0, NULL,         4.9,  87),
    (110, 'Harbour Dome',            NULL,                'dome',     '#3f6b78', '#33302d', '#dbe7ea', 'pendant', 'sea',   'metal',   12900, NULL,   9, NULL,         4.6,  64),
    (111, 'Reading Hour',            NULL,                'desk',     '#c98a2b', '#3c3833', '#f5ead2', 'desk',    'amber', 'metal',    8400, NULL,  12, 'new',        NULL,  0),
    (112, 'Tall Tale',               'Studio Öhm',        'cone',     '#7f8f77', '#cda877', '#e7ebe2', 'table',   'moss',  'ceramic',  9900, NULL,   6, 'handmade',   4.7,  29),
    (113, 'Amber Drop',              'Glass & Sons',      'globe',    '#e0a04a', '#4a3b2f', '#f8ead3', 'pendant', 'amber', 'glass',   13900, 17400,  4, NULL,         4.8, 151),
    (114, 'Night Watch',             NULL,                'lantern',  '#3b3a38', '#f0b75b', NULL     , 'table',   'soot',  'metal',    6450, NULL,  19, NULL,         4.2,  33),
    (115, 'Half Arc, Brass',         NULL,                'arc',      '#d3a04c', '#a97c35', '#f6ecd6', 'floor',   'amber', 'metal',   24900, NULL,   7, NULL,         4.5,  22),
    (116, 'Hinoki Dusk',             'Fold & Crease',     'paper',    '#e6b7a0', '#6b4a3c', '#f8e7de', 'pendant', 'clay',  'paper',    5400, NULL,  26, NULL,         4.4,  70),
    (117, 'Chanterelle',             'Studio Öhm',        'mushroom', '#e2a13f', '#f0e2c6', '#faefd7', 'table',   'amber', 'ceramic',  9400, NULL,  11, 'handmade',   5.0,  16),
    (118, 'Pine Dome',               NULL,                'dome',     '#5f7a5c', '#5a4a3a', '#e3ebdf', 'pendant', 'moss',  'metal',   12900, NULL,   3, NULL,         4.6,  48),
    (119, 'Smoke Globe',             'Glass & Sons',      'globe',    '#8d8a92', '#3a3838', '#e5e4ea', 'pendant', 'soot',  'glass',   15900, NULL,   0, NULL,         4.1,  19),
    (120, 'Draughtsman',             NULL,                'desk',     '#b7472f', '#443a33', '#f4e0d9', 'desk',    'clay',  'metal',    7900, NULL,  15, NULL,         4.7, 112),
    (121, 'Quiet Corner',            NULL,                'arc',      '#6f8aa0', '#5d5650', '#e1e8ee', 'floor',   'sea',   'metal',   18900, 21900,  2, NULL,         4.3,  37),
    (122, 'Storm Light No. 5',       NULL,                'lantern',  '#a8452f', '#f3c062', '#f5e2d9', 'table',   'clay',  'metal',    6950, NULL,  28, NULL,         4.6,  90),
    (123, 'Pleat, Rosewater',        'Fold & Crease',     'cone',     '#dfa59a', '#7a5147', '#f9e8e3', 'table',   'clay',  'paper',    5900, NULL,  20, 'new',        4.0,   5),
    (124, 'Hinoki Rain',             'Fold & Crease',     'paper',    '#b9cbd1', '#4d5357', '#e4edf0', 'pendant', 'sea',   'paper',    5400, NULL,  33, NULL,         4.5,  61);

CREATE TABLE facet (
    key      TEXT PRIMARY KEY,
    title    TEXT NOT NULL,
    visible  INTEGER NOT NULL,
    position INTEGER NOT NULL
);
INSERT INTO facet VALUES
    ('kind', 'Kind', 1, 1), ('colour', 'Colour', 1, 2), ('material', 'Material', 1, 3),
    ('price', 'Price', 1, 4), ('voltage', 'Voltage', 0, 5);

CREATE TABLE facet_value (
    facet    TEXT REFERENCES facet,
    position INTEGER,
    value    TEXT NOT NULL,
    label    TEXT,
    swatch   TEXT,
    chosen   INTEGER NOT NULL DEFAULT 0,
    PRIMARY KEY (facet, position)
);
INSERT INTO facet_value VALUES
    ('kind', 1, 'pendant', 'Pendants', NULL, 1), ('kind', 2, 'table', 'Table lamps', NULL, 1),
    ('kind', 3, 'desk', 'Desk lamps', NULL, 1), ('kind', 4, 'floor', 'Floor lamps', NULL, 1),
    ('colour', 1, 'sand', NULL, '#e9d9bd', 0), ('colour', 2, 'amber', NULL, '#e0a04a', 0),
    ('colour', 3, 'clay', NULL, '#c9622f', 0), ('colour', 4, 'moss', NULL, '#6f8468', 0),
    ('colour', 5, 'sea', NULL, '#4c7382', 0), ('colour', 6, 'soot', NULL, '#3b3a38', 0),
    ('material', 1, 'metal', 'Metal', NULL, 0), ('material', 2, 'ceramic', 'Ceramic', NULL, 0),
    ('material', 3, 'glass', 'Blown glass', NULL, 0), ('material', 4, 'paper', 'Paper & linen', NULL, 0),
    ('price', 1, '-60', 'Under €60', NULL, 0), ('price', 2, '60-100', '€60 to €100', NULL, 0),
    ('price', 3, '100-150', '€100 to €150', NULL, 0), ('price', 4, '150+', '€150 and up', NULL, 0),
    ('voltage', 1, '230', '230 V', NULL, 0);

CREATE VIEW product_facet (facet, value, product) AS
    SELECT 'kind', kind, id FROM product UNION ALL
    SELECT 'colour', colour, id FROM product UNION ALL
    SELECT 'material', material, id FROM product UNION ALL
    SELECT 'voltage', '230', id FROM product UNION ALL
    SELECT 'price', CASE WHEN cents < 6000 THEN '-60' WHEN cents < 10000 THEN '60-100'
                         WHEN cents < 15000 THEN '100-150' ELSE '150+' END, id FROM product;

CREATE TABLE sorting (
    key   TEXT PRIMARY KEY,
    label TEXT NOT NULL
);
INSERT INTO sorting VALUES
    ('popular', 'Most loved'), ('newest', 'Newest'), ('price_up', 'Price, low to high'), ('price_down', 'Price, high to low');

-- Oldest first, as a session stores it.
CREATE TABLE viewed (
    position INTEGER PRIMARY KEY,
    product  INTEGER REFERENCES product
);
INSERT INTO viewed VALUES (1, 104), (2, 108), (3, 122), (4, 102), (5, 117);

CREATE TABLE footer_link (
    title TEXT,
    label TEXT,
    url   TEXT
);
INSERT INTO footer_link VALUES
    ('Help',      'Delivery & returns', '/help/delivery'),
    ('Help',      'Repairs',            '/help/repairs'),
    ('Help',      'Write to us',        '/help/contact'),
    ('Workshop',  'Our makers',         '/makers'),
    ('Workshop',  'Materials',          '/materials'),
    ('Workshop',  'Visit the studio',   '/visit'),
    ('Company',   'About',              '/about'),
    ('Company',   'Terms',              '/terms'),
    ('Company',   'Privacy',            '/privacy');
