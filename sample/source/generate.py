#!/usr/bin/env python3
"""Writes the sample store's text files, one per store file, into the folder above this one.

The councils, their codes and towns and the general chart of accounts are public facts; every person,
legal entity, account of its own, other body and agreement is invented. Telephone numbers are of the
ranges kept for fiction, mail addresses of the domain kept for examples. The same run gives the same
files; what is added is drawn after all the rest, so that the rest keeps its values.

A line is a record: {"id": "001", "fields": ["CD01", ["v1", "v2"], ...]}; fields[i] is attribute
i + 1, a list when the attribute is multivalued. What the attributes hold: docs/record-layouts.md.
"""

import datetime
import json
import pathlib
import random

HERE = pathlib.Path(__file__).resolve().parent
OUT = HERE.parent
RANDOM = random.Random(1967)
DAY_ZERO = datetime.date(1967, 12, 31)
AGREEMENTS = 2000
BENEFICIARIES = 950

SERVICE_OF_TYPE = {"P": "SAAD", "M": "MANDAT", "I": "INTERM", "S": "SSIAD"}
ENTITIES = {
    "010": ("AIDE A DOMICILE DU VAL CLAIR", "ADVC", "BOURG-EN-BRESSE", "01000", 4),
    "020": ("SERVICES A LA PERSONNE DES QUATRE VENTS", "SPQV", "RENNES", "35000", 2),
    "030": ("MAINTIEN A DOMICILE DE ROCHEBELLE", "MDRB", "LILLE", "59000", 3),
    "040": ("ENTRAIDE DES DEUX VALLEES", "EDV", "AGEN", "47000", 5),
}
ACTIVITIES = [
    ("P", "Aide ménagère"), ("P", "Garde de jour"), ("P", "Garde de nuit"),
    ("P", "Aide et accompagnement à domicile"), ("P", "Portage de repas"),
    ("M", "Emploi direct accompagné"), ("M", "Garde de nuit mandataire"),
    ("I", "Mise à disposition"), ("I", "Petits travaux"),
    ("S", "Soins infirmiers à domicile"), ("S", "Soins de nuit"),
]
ADDED_ENTITIES = {
    "050": ("SERVICES A DOMICILE DES TROIS PONTS", "SDTP", "NEVERS", "58000", 3),
}
ADDED_ACTIVITIES = {
    "030P12": {1: "Téléassistance à domicile", 2: "030", 12: "P", 13: SERVICE_OF_TYPE["P"]},
}
ADDED_ACCOUNTS = {
    "0104112100000": 'CLIENTS "HORS SECTEUR" - PRESTATIONS',
    "0104112200000": "CLIENTS - BENEFICIAIRES",
    "0104112300000": "CLIENTS - BENEFICIAIRES",
    "0504110000000": "CLIENTS",
    "0507060000000": "PRESTATIONS DE SERVICES",
    "0507400000000": "SUBVENTIONS D'EXPLOITATION",
}
ENTITY_OF_ONE_TYPE = "040"
ENTITY_OF_TWO_SERVICES = "020"

COMPLEMENTARY = [
    ("CRCBOIS", "CAISSE DE RETRAITE COMPLEMENTAIRE DES METIERS DU BOIS", "03"),
    ("CRCTEXT", "CAISSE DE RETRAITE COMPLEMENTAIRE DU TEXTILE", "03"),
    ("CRCEAU", "CAISSE DE RETRAITE COMPLEMENTAIRE DES GENS DE L'EAU", "03"),
    ("MUTCLAIRE", "MUTUELLE CLAIRE FONTAINE", "04"),
    ("MUTHORIZ", "MUTUELLE DES QUATRE HORIZONS", "04"),
    ("MUTRIVES", "MUTUELLE DES DEUX RIVES", "04"),
    ("PREVART", "INSTITUTION DE PREVOYANCE DES ARTISANS REUNIS", "05"),
    ("PREVLIBRE", "INSTITUTION DE PREVOYANCE DES PROFESSIONS LIBRES", "05"),
    ("SECMUT", "SECOURS MUTUEL DES ANCIENS", "07"),
    ("FONDSOL", "FONDS DE SOLIDARITE DES RETRAITES", "07"),
    ("CCASVAL", "CENTRE COMMUNAL D'ACTION SOCIALE DE VALCLAIR", "07"),
    ("AMREGIO", "ASSURANCE MALADIE REGIONALE COMPLEMENTAIRE", "06"),
]
EXAMPLES = [
    # acronym, name, type, what its record holds other than a plain one, its agreements: first day,
    # last day, whether closed
    ("CRREVERB", "CAISSE DE RETRAITE DES ALLUMEURS DE REVERBERES", "P",
     {19: "1", 20: 4, 21: ["AVI", "PAP", "RIB"], 22: "4112100000",
      61: ["10", "11", "19", "21", "26"]},
     [("2025-03-01", "2026-02-28", ""), ("2024-07-01", "2027-06-30", ""),
      ("2023-01-01", "2024-12-31", ""), ("2025-01-01", "2027-12-31", "O")]),
    ("CRFORGE", "CAISSE DE RETRAITE DES FORGERONS", "P",
     {19: "3", 20: 5, 21: ["DOM", "GIR", "PAP", "CNI", "PAP2", "PLA"], 22: "4112300000", 43: "08",
      61: ["26", "21", "19", "11", "10"]},
     [("2025-01-01", "2026-01-01", "")]),
    ("CRVERRE", "CAISSE DE RETRAITE DES SOUFFLEURS DE VERRE", "P", {19: "1"},
     [("2024-01-01", "2025-12-31", ""), ("2025-01-01", "2027-12-31", "O"),
      ("2023-01-01", "2023-12-31", "O")]),
    ("MUTVERGER", "MUTUELLE DES VERGERS", "C", {19: "3", 43: "04"},
     [("2024-01-01", "2025-12-31", ""), ("2025-06-01", "2028-05-31", "O")]),
    ("CRARPENT", "CAISSE DE RETRAITE DES ARPENTEURS", "P",
     {61: ["10", "11", "12", "13", "14", "19", "24"]}, []),
    ("CRENLUM", "CAISSE DE RETRAITE DES ENLUMINEURS", "P",
     {46: "020", 47: ["020P05"], 48: 12, 61: ["11"]}, []),
    ("CRSOURCE", "CAISSE DE RETRAITE DES SOURCIERS", "P", {46: "040", 47: []}, []),
    ("CRPONTS", "CAISSE DE RETRAITE DES PASSEURS DE PONTS", "P",
     {22: "4670000000", 23: "7085000000", 46: "050", 47: [], 56: "7580000000"}, []),
    ("CRMOULIN", "CAISSE DE RETRAITE DES MEUNIERS", "P", {47: ["010P01", "010P99", "010P02"]}, []),
]
UNNAMED = {"CD05", "CD09", "CD23", "CD48", "CTG973", "MUTRIVES", "FONDSOL"}
ONLY_IN_REQUESTS = {"CD15", "SECMUT"}
NOT_IN_REQUESTS = {"CD01", "CD35", "CRCBOIS"}
MANY_RATES = "CD59"
BODY_OF_LETTERS = "125"
BODY_OF_A_LONG_LISTING = "059"
LONG_NAMES = ["MONTREDIER DE LA CROIX BLANCHE ET DES QUATRE VENTS",
              "URVENELLE DE LA TUILERIE DU VIEUX PRESSOIR DES LAVANDIERES"]
UNKNOWN_TITLE = "9"
FULL_WIDTH = "CD62"

DOCUMENTS = [
    ("AVI", "Avis d'imposition"), ("DOM", "Justificatif de domicile"),
    ("CER", "Certificat médical"), ("RIB", "Relevé d'identité bancaire"),
    ("NOT", "Notification de la caisse de retraite"), ("FAM", "Livret de famille"),
    ("CNI", "Carte nationale d'identité"), ("VIT", "Attestation de carte Vitale"),
    ("GIR", "Grille d'évaluation AGGIR"), ("PLA", "Plan d'aide signé"),
]
STATISTICS = [
    ("01", "Conseil départemental"), ("02", "Collectivité à statut particulier"),
    ("03", "Caisse de retraite"), ("04", "Mutuelle"), ("05", "Institution de prévoyance"),
    ("06", "Assurance maladie"), ("07", "Autre organisme"),
]
SLIP_PARAMETERS = {
    "10": ("Numéro de dossier", 12), "11": ("Nom - prénom", 30), "12": ("Nom patronymique", 25),
    "13": ("Date de naissance", 10), "14": ("Adresse", 35), "15": ("Code postal", 5),
    "16": ("Ville", 25), "17": ("Secteur", 10), "18": ("Numéro de sécurité sociale", 15),
    "19": ("Période", 7), "20": ("Heures accordées", 9), "21": ("Heures réalisées", 9),
    "22": ("Dont heures majorées", 8), "23": ("Taux horaire", 8),
    "24": ("Montant organisme", 12), "25": ("Participation bénéficiaire", 12),
    "26": ("Montant total", 12), "27": ("Date de début d'accord", 10),
    "28": ("Date de fin d'accord", 10), "29": ("Code thésaurus", 8),
}
SLIP_WIDTH = 130
TITLES = {"1": ("Monsieur", "M."), "2": ("Madame", "Mme"), "3": ("Monsieur et Madame", "M. et Mme")}
STREET_KINDS = {
    "ALL": "allée", "AV": "avenue", "BD": "boulevard", "CHE": "chemin", "CRS": "cours",
    "IMP": "impasse", "LOT": "lotissement", "PL": "place", "QU": "quai", "RTE": "route",
    "RUE": "rue", "SQ": "square",
}
STREETS = [
    "DES TILLEULS", "DU MOULIN", "DE LA FONTAINE", "DES LAVANDIERES", "DU VIEUX PUITS",
    "DES CERISIERS", "DE LA TUILERIE", "DES REMPARTS", "DU LAVOIR", "DES QUATRE VENTS",
    "DE LA CROIX BLANCHE", "DES GLYCINES", "DU PRESSOIR", "DE LA BERGERIE", "DES NOYERS",
]
FIRST_NAMES = {
    "1": ["ANDRE", "BERNARD", "CLAUDE", "EMILE", "FERNAND", "GASTON", "HENRI", "LUCIEN",
          "MARCEL", "RAYMOND", "RENE", "ROGER"],
    "2": ["ALICE", "BLANCHE", "COLETTE", "DENISE", "GERMAINE", "GINETTE", "HUGUETTE",
          "LUCETTE", "MADELEINE", "ODETTE", "PAULETTE", "SIMONE"],
}
NAME_BEGINS = ["BRANDE", "CORMI", "DOUVRE", "ESTRA", "FALGUE", "GRIVE", "HERBO", "JONQUE",
               "LARVO", "MONTRE", "NAUDI", "ORSE", "PELVE", "QUINTE", "ROUVE", "SABLO",
               "TRAVI", "URVE", "VARGUE", "YSAN"]
NAME_ENDS = ["BOIS", "CHARD", "DIER", "FONT", "GNAC", "LLON", "MARD", "NELLE", "RAULT",
             "SSAN", "TIERE", "VAL"]


def day(year, month, of_month):
    return (datetime.date(year, month, of_month) - DAY_ZERO).days


def read_table(name):
    lines = (HERE / name).read_text(encoding="utf-8").splitlines()
    return [line.split(";") for line in lines if line and not line.startswith("#")]


def as_text(value):
    return [str(each) for each in value] if isinstance(value, list) else str(value)


def record(attributes):
    """Fields by attribute number, up to the last one that holds anything."""
    held = {number: as_text(value) for number, value in attributes.items() if value not in ("", [])}
    return [held.get(number, "") for number in range(1, max(held, default=0) + 1)]


def write(file, records):
    lines = [json.dumps({"id": key, "fields": record(fields)}, ensure_ascii=False,
                        separators=(",", ":")) for key, fields in records.items()]
    (OUT / f"{file}.jsonl").write_text("\n".join(lines) + "\n", encoding="utf-8", newline="\n")


def telephone(zone):
    fictional = {1: "0199 00", 2: "0261 91", 3: "0353 01", 4: "0465 71", 5: "0536 49"}
    digits = fictional[zone].replace(" ", "") + f"{RANDOM.randrange(10000):04d}"
    return " ".join(digits[i:i + 2] for i in range(0, 10, 2))


def address(town, postal_code, zone, mail="", complement="", street=True):
    return {
        3: complement,
        4: RANDOM.randrange(1, 120) if street else "",
        5: RANDOM.choice(sorted(STREET_KINDS)) if street else "",
        6: RANDOM.choice(STREETS) if street else "",
        8: postal_code,
        9: town,
        10: telephone(zone),
        11: telephone(zone) if mail else "",
        12: mail,
    }


def invented_name():
    return RANDOM.choice(NAME_BEGINS) + RANDOM.choice(NAME_ENDS)


def contact():
    title = RANDOM.choice(["1", "2"])
    return f"{TITLES[title][1]} {RANDOM.choice(FIRST_NAMES[title])} {invented_name()}"


# --- Legal entities, activities, accounts and the small tables


def activities():
    out = {}
    for entity in ENTITIES:
        for number, (kind, label) in enumerate(ACTIVITIES, start=1):
            if entity == ENTITY_OF_ONE_TYPE and kind != "P":
                continue
            service = SERVICE_OF_TYPE[kind]
            if entity == ENTITY_OF_TWO_SERVICES and label == "Portage de repas":
                service = "REPAS"
            out[f"{entity}{kind}{number:02d}"] = {1: label, 2: entity, 12: kind, 13: service}
    return out


def entities(described):
    return {code: {1: name, 2: acronym,
                   **address(town, postal, zone, f"contact@{acronym.lower()}.example")}
            for code, (name, acronym, town, postal, zone) in described.items()}


def accounts():
    chart = read_table("plancomptable.txt")
    out = {f"{entity}{number:0<10}": {1: label} for entity in ENTITIES for number, label in chart}
    return out | {key: {1: label} for key, label in ADDED_ACCOUNTS.items()}


def small_tables():
    write("TABLES", {
        "PIECESRENOUV": {1: "Pièces de renouvellement", 2: [code for code, _ in DOCUMENTS],
                         3: [label for _, label in DOCUMENTS]},
        "STATORGCHG": {1: "Catégories statistiques d'organismes",
                       2: [code for code, _ in STATISTICS], 3: [label for _, label in STATISTICS]},
    })
    write("PARAMBORDORGCHG",
          {key: {1: label, 2: width} for key, (label, width) in SLIP_PARAMETERS.items()})
    write("TITRES", {key: {1: full, 2: short} for key, (full, short) in TITLES.items()})
    write("NATUREVOIE", {key: {1: label} for key, label in STREET_KINDS.items()})
    write("PERIODESPAIE", {"1": {1: "202601"}})
    write("CONSTANTESPAIE", {"1": {9: day(2002, 1, 1)}})


# --- Funding bodies


def rates(count):
    """Attributes 25 to 28: most recent first; service provision <= normal <= increased rate."""
    rows, date, normal = [], datetime.date(2026, 1, 1), RANDOM.randrange(2250, 2500, 5)
    for _ in range(count):
        rows.append((
            (date - DAY_ZERO).days, normal,
            normal + RANDOM.choice([0, 250, 310]) if RANDOM.random() < 0.8 else "",
            normal - RANDOM.choice([0, 180, 400]) if RANDOM.random() < 0.6 else ""))
        date = date.replace(year=date.year - 1)
        normal -= RANDOM.randrange(20, 90, 5)
    return {25 + column: [row[column] for row in rows] for column in range(4)}


def deductions():
    """Attributes 29 to 31: hour ranges that touch and do not overlap."""
    bounds = [0, 1000, 2000, 4000, 6000][:RANDOM.randrange(2, 6)]
    rows = list(zip(bounds, bounds[1:]))
    return {29: [start for start, _ in rows], 30: [end for _, end in rows],
            31: [500 * (i + 1) for i in range(len(rows))]}


def scale(in_amount):
    """Attributes 32 to 39: brackets that chain, for single persons and for households."""
    count = RANDOM.randrange(4, 8)
    single = [0] + [83_600 + 21_500 * i for i in range(count)]
    household = [0] + [129_700 + 33_400 * i for i in range(count)]
    step = RANDOM.randrange(120, 260, 5) if in_amount else RANDOM.choice([500, 1000])
    current = [step * i for i in range(count)]
    with_previous = RANDOM.random() < 0.7
    before = [max(part - (15 if in_amount else 250), 0) for part in current]
    return {32: single[:-1], 33: single[1:], 34: household[:-1], 35: household[1:],
            36: before if with_previous else [""] * count, 37: current,
            38: day(2025, 1, 1) if with_previous else "", 39: day(2026, 1, 1)}


def slip_parameters(acronym):
    """Selected slip parameters, in order, within the page's width."""
    if acronym == FULL_WIDTH:
        chosen = ["10", "11", "12", "13", "19", "20", "21", "22", "23", "26"]
        assert sum(SLIP_PARAMETERS[key][1] for key in chosen) == SLIP_WIDTH
        return chosen
    chosen, width = ["10", "11"], 42
    for key in RANDOM.sample(sorted(SLIP_PARAMETERS), len(SLIP_PARAMETERS)):
        if key not in chosen and width + SLIP_PARAMETERS[key][1] <= SLIP_WIDTH:
            chosen.append(key)
            width += SLIP_PARAMETERS[key][1]
    return chosen[:RANDOM.randrange(4, 10)]


def covered(entity, principal, every_activity):
    """An activity type and the covered activities: of one type, attached to one service."""
    types = ["P"] * 7 + (["M", "M", "S", "I"] if principal else ["S", "I"])
    kind = "P" if entity == ENTITY_OF_ONE_TYPE else RANDOM.choice(types)
    possible = [code for code, fields in every_activity.items()
                if fields[2] == entity and fields[12] == kind
                and fields[13] == SERVICE_OF_TYPE[kind]]
    return kind, sorted(RANDOM.sample(possible, RANDOM.randrange(1, len(possible) + 1)))


def account(*numbers):
    return f"{RANDOM.choice(numbers):0<10}"


def body(acronym, name, principal, statistics, where, every_activity):
    entity = RANDOM.choice(sorted(ENTITIES))
    kind, chosen = covered(entity, principal, every_activity)
    in_hours = not (kind == "M" or (not principal and RANDOM.random() < 0.3))
    in_amount = principal and (kind in "PM" or RANDOM.random() < 0.5)
    requests = RANDOM.random() < 0.6
    outside_books = (kind == "M" or (kind == "P" and not principal)) and RANDOM.random() < 0.4
    global_cost = RANDOM.random() < 0.3
    monthly_slip = principal and RANDOM.random() < 0.15
    return {
        1: acronym, 2: name, **where, 15: contact(), 16: contact(),
        17: RANDOM.choice("MMMTF"), 18: "P" if principal else "C",
        19: RANDOM.choice("1223"), 20: RANDOM.choice([0, 1, 1, 2, 3, 6]),
        21: [code for code, _ in RANDOM.sample(DOCUMENTS, RANDOM.randrange(0, 6))],
        22: "" if outside_books else account("411", "4111", "467"),
        23: "" if outside_books else account("706", "7085"),
        24: "H" if in_hours else "M",
        **(rates(14 if acronym == MANY_RATES else RANDOM.randrange(1, 6)) if in_hours else {}),
        **(deductions() if in_hours and not monthly_slip and RANDOM.random() < 0.6 else {}),
        **scale(in_amount),
        40: RANDOM.choice("QR"), 41: "M" if in_amount else "%",
        42: 0 if global_cost else RANDOM.choice([0, 0, 1]),
        43: statistics, 44: int(requests), 45: "M" if monthly_slip else RANDOM.choice("IR"),
        46: entity, 47: chosen, 48: RANDOM.randrange(1, 5),
        49: f"{RANDOM.randrange(10**6):06d}", 50: int(outside_books),
        51: 0 if not principal else RANDOM.choice([0, 1] if kind == "M" else [0, 0, 1, 2]),
        52: RANDOM.choice(["1", ""]), 53: RANDOM.choice([0, 1]),
        54: account("706", "708"), 55: int(global_cost),
        56: "" if outside_books else account("740", "758"),
        57: int(principal and requests and RANDOM.random() < 0.5),
        58: f"TH{RANDOM.randrange(1, 40):03d}",
        59: RANDOM.choice(["Aide à domicile", "Allocation personnalisée d'autonomie",
                           "Prestation de compensation du handicap", ""]),
        60: RANDOM.choice([30, 45, 60]), 61: slip_parameters(acronym),
        62: RANDOM.sample(["1", "2", "3", "4", "5", "6"], RANDOM.randrange(0, 4)),
    }


def bodies(every_activity):
    out, towns = {}, {}
    for _, acronym, name, town, postal, zone in read_table("departements.txt"):
        code = f"{len(out) + 1:03d}"
        council = not name.startswith("=")
        full = "CONSEIL DEPARTEMENTAL " + name if council else name[1:]
        where = address(town, postal, int(zone), f"contact@{acronym.lower()}.example",
                        "HOTEL DU DEPARTEMENT" if council else "", street=False)
        out[code] = body(acronym, full, True, "01" if council else "02", where, every_activity)
        towns[code] = (town, postal, int(zone))
    anywhere = sorted(towns.values())
    for acronym, name, statistics in COMPLEMENTARY:
        code = f"{len(out) + 1:03d}"
        towns[code] = RANDOM.choice(anywhere)
        where = address(*towns[code], f"contact@{acronym.lower()}.example")
        out[code] = body(acronym, name, False, statistics, where, every_activity)
    return out, towns


# --- Beneficiaries and what names them


def person(title, town, surname_at, first_name_at):
    return {1: title, surname_at: invented_name(), first_name_at: RANDOM.choice(FIRST_NAMES[title]),
            **address(*town)}


def beneficiary(town):
    civil = person(RANDOM.choice("12222"), town, 2, 15)
    return civil | {3: RANDOM.choice(["", "", "", "APPARTEMENT 12", "BATIMENT B", "2E ETAGE"]),
                    7: RANDOM.choice(["", "", "", "", "LE BOURG", "LES GRANGES"]),
                    16: civil[2] if RANDOM.random() < 0.5 else invented_name(),
                    17: day(1928, 1, 1) + RANDOM.randrange(365 * 30),
                    18: RANDOM.choice(["NORD", "SUD", "EST", "OUEST", "CENTRE"])}


def beneficiaries(towns_of_bodies):
    civil, responsible, at = {}, {}, {}
    for number in range(1, BENEFICIARIES + 1):
        key = f"{number:05d}"
        at[key] = RANDOM.choice(sorted(towns_of_bodies))
        town = towns_of_bodies[at[key]]
        civil[key] = beneficiary(town)
        if RANDOM.random() < 0.12:
            responsible[key] = person(RANDOM.choice("12"), town, 2, 15)
    return civil, responsible, at


def rate_on(of_body, date):
    """The normal rate of a day; the oldest one before them all, none of a body without rates."""
    dated = list(zip(of_body.get(25, []), of_body.get(26, [])))
    return next((rate for since, rate in dated if since <= date), dated[-1][1] if dated else "")


def history(of_body, start, end):
    """Attributes 10 to 13 of an agreement, most recent first."""
    line = RANDOM.randrange(len(of_body[37]))
    scales = [(of_body[39], 37)] + ([(of_body[38], 36)] if of_body[38] else [])
    applied = [(date, part) for date, part in scales if start < date <= end]
    applied.append((start, scales[-1][1]))
    return {10: [rate_on(of_body, date) for date, _ in applied], 11: [date for date, _ in applied],
            12: [line + 1] * len(applied), 13: [of_body[part][line] for _, part in applied]}


def agreement(code, of_body, aided, start, end):
    return {
        1: code, 2: aided,
        3: RANDOM.randrange(400, 9000, 50) if of_body[24] == "H" else "",
        4: RANDOM.randrange(5000, 90000, 100) if of_body[24] == "M" else "",
        5: start, 6: end, 7: RANDOM.choice(of_body[47]), **history(of_body, start, end),
    }


def agreements(all_bodies, at):
    out, orders, keys = {}, {}, sorted(at)
    complementary = [c for c, fields in all_bodies.items() if fields[18] == "C"]
    for number in range(AGREEMENTS):
        aided = keys[number % len(keys)]
        code = RANDOM.choice(complementary) if RANDOM.random() < 0.2 else at[aided]
        of_body = all_bodies[code]
        orders[aided] = orders.get(aided, 0) + 1
        start = day(2023, 1, 1) + RANDOM.randrange(36) * 30
        end = start + RANDOM.choice([364, 729, 1094])
        out[f"{aided}{orders[aided]:03d}"] = agreement(code, of_body, aided, start, end) | {
            18: "O" if RANDOM.random() < 0.15 else "",
        }
    return out


def billing(all_agreements):
    out = {}
    for key, fields in sorted(all_agreements.items()):
        if fields[18] == "O":
            continue
        held = out.setdefault(fields[2], {1: [], 2: [], 3: [], 4: []})
        for attribute, value in ((1, key), (2, fields[1]), (3, fields[11][0]), (4, fields[13][0])):
            held[attribute].append(value)
    return out


def requests(all_bodies, at):
    asked = [code for code, fields in all_bodies.items()
             if fields[1] not in UNNAMED and fields[1] not in NOT_IN_REQUESTS and fields[44]]
    only = [code for code, fields in all_bodies.items() if fields[1] in ONLY_IN_REQUESTS]
    chosen = only * 3 + [RANDOM.choice(asked) for _ in range(80)]
    return {f"{number:06d}": {1: code, 2: RANDOM.choice(sorted(at)),
                              3: day(2025, 11, 1) + RANDOM.randrange(60),
                              4: RANDOM.choice(all_bodies[code][47]),
                              5: RANDOM.randrange(400, 6000, 50)}
            for number, code in enumerate(chosen, start=1)}


# --- The examples


def plain_body(acronym, name, kind, where):
    """A body of provider activities, counted in hours."""
    principal = kind == "P"
    return {
        1: acronym, 2: name, **where, 15: contact(), 16: contact(), 17: "M", 18: kind, 19: "2",
        20: 1, 22: account("411"), 23: account("706"), 24: "H", **rates(2), **scale(principal),
        40: "R", 41: "M" if principal else "%", 42: 0, 43: "03", 44: 0, 45: "R", 46: "010",
        47: ["010P01", "010P02"], 48: 2, 49: f"{RANDOM.randrange(10**6):06d}", 50: 0, 51: 0, 53: 0,
        54: account("708"), 55: 0, 56: account("740"), 57: 0,
        58: f"TH{RANDOM.randrange(1, 40):03d}", 59: "Aide à domicile", 60: 30,
        61: ["10", "11", "19", "20", "21", "26"], 62: ["3", "5"],
    }


def dated_rates(count, increased, provision):
    """Attributes 25 to 28: a rate a quarter, the last two lists at those distances from the normal one.

    The distances repeat. A rate that there is none of is one blank, as the rates' editor leaves it, or
    nothing, as the page writes it.
    """
    quarters = [(2026 - (i + 3) // 4, 1 + 3 * (-i % 4)) for i in range(count)]
    normal = [2480 - 15 * i for i in range(count)]

    def beside(distances):
        repeated = (distances[i % len(distances)] for i in range(count))
        return [each if each in ("", " ") else rate + each for rate, each in zip(normal, repeated)]

    return {25: [day(year, month, 1) for year, month in quarters], 26: normal,
            27: beside(increased), 28: beside(provision)}


def ranges(*rows):
    """Attributes 29 to 31 of rows that are start hour, end hour and percentage."""
    return {29 + column: [100 * row[column] for row in rows] for column in range(3)}


def brackets(count, part, with_previous=True):
    """Attributes 32 to 39: so many brackets that chain, the participation growing by `part`."""
    single, household = ([0] + [first + step * i for i in range(count)]
                         for first, step in ((83_600, 21_500), (129_700, 33_400)))
    current = [part * (i + 1) for i in range(count)]
    return {32: single[:-1], 33: single[1:], 34: household[:-1], 35: household[1:],
            36: [each - 10 for each in current] if with_previous else [""] * count, 37: current,
            38: day(2025, 1, 1) if with_previous else "", 39: day(2026, 1, 1)}


def apart(scale_held, attribute, row, value):
    """The scale with one value changed."""
    values = list(scale_held[attribute])
    values[row] = value
    return scale_held | {attribute: values}


def coverage_examples():
    """As EXAMPLES, for the rates, the deductions and the scale."""
    agreed = [("2025-03-01", "2026-12-31", ""), ("2024-01-01", "2025-12-31", "")]
    return [
        ("CRCARRIER", "CAISSE DE RETRAITE DES CARRIERS", "P",
         dated_rates(1, [" "], [" "]) | ranges((0, 10, 5), (10, 20, 10)) | brackets(1, 180)
         | {42: 1}, []),
        ("CRCHAUME", "CAISSE DE RETRAITE DES CHAUMIERS", "P",
         dated_rates(12, [" ", "", 310], ["", " ", -180]) | ranges((0, 20, 5), (5, 15, 10))
         | brackets(12, 125) | {55: 1}, []),
        ("CRTONNEAU", "CAISSE DE RETRAITE DES TONNELIERS", "P",
         dated_rates(13, [310], [-180]) | ranges(*((10 * i, 10 * i + 10, i + 1) for i in range(13)))
         | brackets(13, 130, with_previous=False), []),
        ("CRLUTH", "CAISSE DE RETRAITE DES LUTHIERS", "P",
         dated_rates(60, [250, 0], [-400, 0]) | ranges((0, 10, 5), (20, 20, 10))
         | brackets(5, 150), agreed),
        ("CROSIER", "CAISSE DE RETRAITE DES VANNIERS", "P",
         dated_rates(3, [""], [""]) | brackets(5, 500) | {41: "%"}, agreed),
        ("CRPOTIER", "CAISSE DE RETRAITE DES POTIERS", "P",
         ranges((0, 10, 5), (10, 30, 10)) | {45: "M"}, []),
        ("CRFAIENCE", "CAISSE DE RETRAITE DES FAIENCIERS", "P",
         apart(brackets(5, 160), 32, 2, 105_200), []),
        ("CRCIRE", "CAISSE DE RETRAITE DES CIRIERS", "P",
         brackets(4, 170) | {38: day(2026, 1, 1)}, []),
        ("CRSABOT", "CAISSE DE RETRAITE DES SABOTIERS", "P",
         apart(brackets(4, 190), 37, 1, ""), []),
    ]


def add_examples(all_bodies, towns, civil, all_agreements):
    """Each example after the last body, its agreements those of beneficiaries of their own."""
    anywhere = sorted(towns.values())
    for acronym, name, kind, shown, agreed in EXAMPLES + coverage_examples():
        code, town = f"{len(all_bodies) + 1:03d}", RANDOM.choice(anywhere)
        where = address(*town, f"contact@{acronym.lower()}.example")
        all_bodies[code] = plain_body(acronym, name, kind, where) | shown
        for first, last, closed in agreed:
            aided = f"{len(civil) + 1:05d}"
            civil[aided] = beneficiary(town)
            start, end = (day(*map(int, date.split("-"))) for date in (first, last))
            all_agreements[f"{aided}001"] = agreement(
                code, all_bodies[code], aided, start, end) | {18: closed}


# --- Incomes, and the agreements that a new scale meets


def income_in(of_body, row, kind):
    """An income of a row (from 1) of the brackets of a household kind."""
    start, end = (34, 35) if kind == "M" else (32, 33)
    return RANDOM.randrange(of_body[start][row - 1], of_body[end][row - 1])


def add_incomes(all_bodies, all_agreements, civil, elements):
    """Attributes 5 and 6, mostly of the row that the first agreement has; of some there is none."""
    for aided, held in elements.items():
        first = all_agreements[held[1][0]]
        of_body = all_bodies[first[1]]
        kind = "M" if civil[aided][1] == "3" else RANDOM.choice("SSSMM")
        income, chance = income_in(of_body, first[12][0], kind), RANDOM.random()
        if chance < 0.06:
            income = ""
        elif chance < 0.09:
            income = of_body[35][-1] + income
        held |= {5: income, 6: kind if RANDOM.random() < 0.95 else ""}


class Updates:
    """Beneficiaries after the last one, each with agreements of a body that last beyond 2026."""

    def __init__(self, all_bodies, towns, civil, responsible, all_agreements, elements):
        self.all_bodies, self.towns = all_bodies, towns
        self.civil, self.responsible = civil, responsible
        self.all_agreements, self.elements = all_agreements, elements

    def agreement(self, code, key, later):
        start = day(2025, 1, 1)
        held = agreement(code, self.all_bodies[code], key[:5], start, day(2027, 12, 31))
        if later:
            rows = {10: held[10][0], 11: day(2027, 1, 1), 12: held[12][0], 13: held[13][0]}
            held |= {number: [value] + held[number] for number, value in rows.items()}
        self.all_agreements[key] = held
        return held

    def add(self, code, changed=(), income=True, later=(False,), kind="S"):
        """The beneficiary's number. `later`: of each agreement, whether its history goes on to 2027;
        `income`: that of the first one's row, or this."""
        aided = f"{len(self.civil) + 1:05d}"
        town = RANDOM.choice(sorted(self.towns.values()))
        self.civil[aided] = beneficiary(town) | dict(changed)
        held = [self.agreement(code, f"{aided}{order:03d}", is_later)
                for order, is_later in enumerate(later, start=1)]
        for key, fields in billing({f"{aided}{order:03d}": fields | {18: ""}
                                    for order, fields in enumerate(held, start=1)}).items():
            self.elements[key] = fields
        in_row = income_in(self.all_bodies[code], held[0][12][0], kind)
        self.elements[aided] |= {5: in_row if income is True else income, 6: kind}
        return aided

    def responsible_of(self, aided, changed=()):
        town = RANDOM.choice(sorted(self.towns.values()))
        self.responsible[aided] = person(RANDOM.choice("12"), town, 2, 15) | dict(changed)


def add_letters(updates):
    """Every way in which the agreements of one body answer a new scale, and letters are headed."""
    code = BODY_OF_LETTERS
    for kind in "SM":
        updates.responsible_of(updates.add(code, kind=kind))
    updates.responsible_of(updates.add(code), {2: "", 15: ""})
    updates.add(code, {1: "3"}, kind="M")
    updates.add(code, {2: LONG_NAMES[0]})
    updates.add(code, {1: UNKNOWN_TITLE})
    updates.add(code, {2: LONG_NAMES[1]}, income="")
    del updates.elements[updates.add(code)]
    updates.add(code, income=updates.all_bodies[code][33][-1] + 1)
    updates.add(code, later=[True])
    unknown = updates.add(code, later=[False, True])
    return unknown


def add_long_listing(updates):
    code = BODY_OF_A_LONG_LISTING
    for number in range(80):
        beyond = updates.all_bodies[code][35][-1] + 100 * number + 1
        updates.add(code, income=["", beyond, True][number % 3], later=[number % 3 == 2])


def main():
    every_activity = activities()
    all_bodies, towns = bodies(every_activity)
    named = {code: town for code, town in towns.items()
             if all_bodies[code][1] not in UNNAMED | ONLY_IN_REQUESTS}
    civil, responsible, at = beneficiaries(
        {code: town for code, town in named.items() if all_bodies[code][18] == "P"})
    all_agreements = agreements({code: all_bodies[code] for code in named}, at)
    every_entity = entities(ENTITIES)
    every_request = requests(all_bodies, at)

    every_entity |= entities(ADDED_ENTITIES)
    add_examples(all_bodies, towns, civil, all_agreements)

    elements = billing(all_agreements)
    add_incomes(all_bodies, all_agreements, civil, elements)
    updates = Updates(all_bodies, towns, civil, responsible, all_agreements, elements)
    add_long_listing(updates)
    del civil[add_letters(updates)]

    small_tables()
    write("ASSOCIATION", every_entity)
    write("ACTIVITES", every_activity | ADDED_ACTIVITIES)
    write("PLANCOMPTABLE", accounts())
    write("ORGPRISECHARGE", all_bodies)
    write("COMPTEUR", {"999": {10: max(all_bodies), 15: "O"}})
    write("CIVILAIDE", civil)
    write("RESPONSABLE", responsible)
    write("ACCORD", all_agreements)
    write("ELTSFACTAIDE", elements)
    write("DEMANDACC", every_request)


if __name__ == "__main__":
    main()
