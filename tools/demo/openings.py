"""When the band was open in the sample logbook, and what the listener noted."""

# Sporadic E: day, hour UTC, site in the middle of the opening, receptions.
ES = [
    ("2019-05-26", 9, "Málaga (Mijas)", 12),
    ("2019-06-08", 16, "Monte Faito", 14),
    ("2019-06-22", 10, "Avala", 9),
    ("2019-07-13", 17, "Lisboa (Monsanto)", 10),
    ("2020-05-23", 11, "Alicante (Aitana)", 11),
    ("2020-06-06", 8, "Bucegi (Costila)", 13),
    ("2020-06-20", 17, "Zaghouan", 8),
    ("2020-07-04", 10, "Sevilla (Valencina)", 12),
    ("2021-05-30", 15, "Martina Franca", 12),
    ("2021-06-12", 9, "Oulu (Kiiminki)", 7),
    ("2021-06-19", 18, "Athina (Parnitha)", 9),
    ("2021-07-10", 11, "Mallorca (Alfabia)", 13),
    ("2022-05-21", 16, "Kyiv", 6),
    ("2022-06-05", 10, "Fóia (Monchique)", 14),
    ("2022-06-18", 17, "Roma (Monte Mario)", 13),
    ("2022-07-16", 9, "Tanger", 9),
    ("2023-05-28", 10, "Biokovo", 11),
    ("2023-06-10", 17, "Granada (Parapanda)", 13),
    ("2023-06-24", 8, "Sofia (Kopitoto)", 10),
    ("2023-07-08", 16, "Oran (Murdjajo)", 8),
    ("2024-05-25", 11, "Monte Scuro", 12),
    ("2024-06-09", 17, "Porto (Monte da Virgem)", 11),
    ("2024-06-29", 10, "Gharghur", 9),
    ("2025-06-14", 16, "Navacerrada", 13),
    ("2025-06-28", 9, "Cluj (Feleac)", 8),
]

# Enhanced tropospheric propagation, in the same form.
TROPO = [
    ("2019-09-21", 20, "Hamburg-Moorfleet", 10),
    ("2020-01-18", 6, "Wrotham", 11),
    ("2020-09-14", 19, "København (Gladsaxe)", 11),
    ("2021-10-09", 6, "Reims (Hautvillers)", 9),
    ("2022-01-15", 21, "Praha (Zizkov)", 8),
    ("2022-10-29", 7, "Sutton Coldfield", 10),
    ("2023-09-09", 20, "Hornisgrinde", 9),
    ("2024-01-27", 6, "Szczecin (Kolowo)", 9),
    ("2024-09-20", 19, "Aarhus (Søsterhøj)", 10),
    ("2024-10-26", 7, "Grünten", 8),
]

# Single pings of meteors.
METEORS = [
    "2019-08-12T05:14:41", "2019-12-14T06:40:03", "2020-08-12T04:52:19", "2020-08-13T05:31:58", "2021-04-22T05:20:30",
    "2021-08-12T06:02:11", "2021-12-14T05:47:26", "2022-01-03T06:55:02", "2022-08-13T04:33:47", "2023-08-13T05:08:15",
    "2023-12-14T06:18:54", "2024-01-04T05:59:37", "2024-08-12T05:41:22", "2024-12-14T06:29:49",
]

# Receptions that every listener here has: moment, mode, PS, site.
FAVOURITES = [
    ("2019-06-29T11:02:44", "Es", "NRK P1", "Gaustatoppen"),
    ("2019-09-22T05:48:10", "Tropo", "R1 Nord", "Bungsberg"),
    ("2020-01-18T07:55:31", "Tropo", "Bayern 3", "Wendelstein"),
    ("2021-10-09T05:20:16", "Tropo", "Ö3", "Salzburg (Gaisberg)"),
    ("2022-06-05T09:41:52", "Es", "RNE 1", "Sevilla (Valencina)"),
    ("2023-05-28T09:33:05", "Es", "RAI R1", "Martina Franca"),
    ("2024-10-26T06:12:27", "Tropo", "Bayern 3", "Ochsenkopf"),
]

# The opening that is still to be looked up, and the days of the two import folders.
LAST_DAY = "2025-07-12"
RDSSPY_DAY = "2025-07-13"
RDSDX_DAY = "2025-07-14"

NOTES_ES = [
    "Very strong for two minutes, then gone",
    "RDS locked within seconds",
    "First time logged",
    "Deep fading, two stations on the channel",
    "Full stereo\nRadiotext decoded without an error",
    "Talk programme, male voice\nidentification on the hour",
    "Pop music, jingle heard\nsite from the regional window\nlater covered by the local station",
    "Audio recorded (3 minutes)",
    "Weak, but PI came up several times",
    "Football report, identified by the advertisements",
    "New country on this channel!",
]
NOTES_TROPO = [
    "Stable all evening",
    "Slow fading, best after sunrise",
    "Strongest station on the channel",
    "Antenna turned away from the local\nbest at 40 degrees",
    "First time logged",
    "Traffic report heard\nregional programme confirmed",
]
NOTES_METEOR = ["Ping of one second", "Burst of about two seconds, PI only", "Long burst\nPI twice, one word of speech"]
