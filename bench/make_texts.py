#!/usr/bin/env python3
"""Generates the benchmark's texts and installations: make_texts.py FOLDER [--brief]; --brief leaves out the largest.

The output is always the same, because each generator has its own seed. Nothing is generated twice: the folder's stamp
records which version of this script filled it.
"""

import argparse
import functools
import hashlib
import json
import pathlib
import random
import shutil
import string

WORDS = """Anchor Almanac Bakery Barley Beacon Bridge Brook Buoy Canal Cellar Chart Cloud Coast Compass Copper Crane
    Current Dairy Depth Ferry Field Fleet Forge Frost Garden Glass Grain Harbour Harvest Heather Hill Honey Island
    Kettle Lantern Ledger Loom Market Meadow Mill Moor Orchard Oven Paper Pilot Pine Plough Quarry Rain Reef River
    Rope Sail Salt Sea Seed Shore Signal Slate Spring Stone Storm Survey Tea Tide Timber Tower Valley Wave Well Wharf
    Wind Wool""".split()
TASKS = "Control Counter Designer Exchange Keeper Ledger Planner Survey Toolkit Viewer Watch Workshop".split()
FOREIGN = ["Café", "Crème", "Glockengießerei", "茶園ノート", "Överblick", "Łódź", "Ελιά", "Маяк"]
FAMILIES = ["almanacs", "core", "kitchen", "land", "metal", "sea", "trade", "webonlyproducts"]
GROUPS = ["Bookkeeping", "Casting", "Counting", "Firing", "Measuring", "Planting", "Printing", "Recipes", "Signals"]

# Placeholders, replaced in the finished text by escapes that json.dumps wouldn't write.
ESCAPES = {"\ue000": "\\u00e9", "\ue001": "\\/", "\ue002": "\\ud83e\\udd89"}


def sentence(rng, words):
    return " ".join(rng.choices(WORDS, k=words)).capitalize() + "."


def display_name(rng, number):
    """A name of a few words and a number. About one in five has non-ASCII or escaped characters."""
    name = " ".join(rng.sample(WORDS, rng.choice((0, 1, 1, 2))) + [rng.choice(TASKS)])
    kind = rng.random()
    if kind < 0.10:
        name = f"{rng.choice(FOREIGN)} {name}"
    elif kind < 0.14:
        name = f'The "{name}"'
    elif kind < 0.18:
        name = f"Caf\ue000 {name}"
    elif kind < 0.20:
        name = f"{name} \ue002"
    return f"{name} {number}"


def base_code(number):
    letters = ""
    while number >= 0:
        letters = string.ascii_uppercase[number % 26] + letters
        number = number // 26 - 1
    return letters


def family(rng):
    entry = {"family": rng.choice(FAMILIES)}
    if rng.random() < 0.75:
        entry["group"] = rng.choice(GROUPS)
    return {"product_family": entry}


def product(rng, number):
    """A product with a catalogue's keys in their usual order. Optional keys are as frequent as in the example."""
    short_name = rng.choice(WORDS).lower() + rng.choice(TASKS).lower() + str(number)
    entry = {
        "display_name": display_name(rng, number),
        "help_location": f"{rng.choice(FAMILIES)}\ue001{short_name}" if rng.random() < 0.15 else short_name,
        "short_name": short_name,
        "basecode": base_code(number),
    }
    if rng.random() < 0.45:
        entry["alt_short_name"] = rng.choice(WORDS).lower() + str(number)
    if rng.random() < 0.85:
        entry["status"] = rng.choices(("current", "beta", "retiring"), (10, 2, 1))[0]
    if rng.random() < 0.07:
        entry["base_product_basecode"] = base_code(rng.randrange(number + 1))
    if rng.random() < 0.07:
        entry["prerequisites"] = [base_code(rng.randrange(number + 1)) for _ in range(2)]
    entry["product_family_list"] = [family(rng) for _ in range(rng.choice((1, 1, 2)))]
    return {"product": entry}


@functools.cache
def catalogue(count):
    rng = random.Random(count)
    products = [product(rng, number) for number in range(count)]
    document = {"documentation_set": {"format": "1.0", "release": "4.2", "published": True, "product_list": products}}
    text = json.dumps(document, indent=2, ensure_ascii=False)
    for mark, escape in ESCAPES.items():
        text = text.replace(mark, escape)
    return text


def long_string():
    rng = random.Random(1)
    return json.dumps(" ".join(rng.choices(WORDS, k=1_300_000)))


def short_numbers():
    rng = random.Random(2)
    return json.dumps([rng.randrange(10 ** rng.randint(1, 4)) for _ in range(1_000_000)])


def long_numbers():
    rng = random.Random(3)
    return "[" + ", ".join(f"{rng.random():.17g}" for _ in range(1_000_000)) + "]"


def typed_arrays(keys):
    rng = random.Random(4)
    fields = {"zqtype": lambda: "int32", "zqdata": lambda: [rng.randrange(-2**31, 2**31) for _ in range(1000)]}
    return json.dumps([{key: fields[key]() for key in keys} for _ in range(1000)])


def falling_keys():
    return json.dumps({f"key{number:06}": number for number in reversed(range(100_000))})


def small_arrays():
    return json.dumps([[number] for number in range(500_000)])


def user(rng):
    name = rng.choice(WORDS + FOREIGN)
    number = rng.randrange(10**9)
    return {
        "id": number,
        "id_str": str(number),
        "name": name,
        "screen_name": f"{name.lower()}_{number % 1000}",
        "location": rng.choice((None, "", "Somewhere by the sea", "東京")),
        "description": sentence(rng, rng.randrange(30)),
        "url": rng.choice((None, f"https://example.org/people/{number}")),
        "protected": False,
        "followers_count": rng.randrange(10**5),
        "created_at": "Sun Aug 31 00:29:15 +0000 2014",
        "utc_offset": rng.choice((None, 3600, -25200)),
        "verified": rng.random() < 0.05,
        "profile_image_url": f"https://example.org/images/{number}/normal.png",
        "following": None,
    }


def message(rng, number):
    tags = rng.sample(WORDS, rng.randrange(4))
    return {
        "created_at": "Sun Aug 31 00:29:15 +0000 2014",
        "id": 505874924095815700 + number,
        "id_str": str(505874924095815700 + number),
        "text": f"{sentence(rng, rng.randrange(4, 20))} 「灯台と海」 🦉",
        "source": '<a href="https://example.org/reader" rel="nofollow">Reader</a>',
        "truncated": False,
        "in_reply_to": rng.choice((None, number)),
        "user": user(rng),
        "geo": None,
        "repeat_count": rng.randrange(100),
        "entities": {
            "tags": [{"text": tag, "indices": [7, 7 + len(tag)]} for tag in tags],
            "urls": [],
            "mentions": [{"id": rng.randrange(10**9), "name": rng.choice(WORDS), "indices": [0, 6]}],
        },
        "favourite": rng.random() < 0.5,
        "lang": "en",
    }


def message_feed():
    rng = random.Random(5)
    return json.dumps({"statuses": [message(rng, number) for number in range(4200)]}, indent=1)


def outline(rng):
    longitude, latitude = rng.uniform(-170, 170), rng.uniform(-80, 80)
    ring = [[longitude + rng.uniform(-1, 1), latitude + rng.uniform(-1, 1)] for _ in range(800)]
    return ring + ring[:1]


def outlines():
    rng = random.Random(6)
    features = [
        {
            "type": "Feature",
            "properties": {"name": rng.choice(WORDS)},
            "geometry": {"type": "Polygon", "coordinates": [outline(rng)]},
        }
        for _ in range(100)
    ]
    return json.dumps({"type": "FeatureCollection", "features": features})


def write(path, text=""):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def install(root, count, proven=1):
    """Two thirds of the products get a proof file in their help location, another fifth one in the catalogue folder.

    `proven` scales both shares, because creating small files takes long.
    """
    rng = random.Random(count)
    text = catalogue(count)
    help_folder = root / "help"
    write(help_folder / "docset.json", text)
    write(help_folder / "docCatalog" / "dataroot.txt")
    for entry in json.loads(text)["documentation_set"]["product_list"]:
        chance = rng.random() / proven
        if chance < 0.67:
            write(help_folder / entry["product"]["help_location"] / "doccenter.properties")
        elif chance < 0.87:
            write(help_folder / "docCatalog" / "products" / f"{entry['product']['short_name']}.properties")


TEXTS = {
    "products-10": lambda: catalogue(10),
    "products-100": lambda: catalogue(100),
    "products-1000": lambda: catalogue(1000),
    "products-5000": lambda: catalogue(5000),
    "products-20000": lambda: catalogue(20_000),
    "products-100000": lambda: catalogue(100_000),
    "long-string": long_string,
    "short-numbers": short_numbers,
    "long-numbers": long_numbers,
    "typed-arrays": lambda: typed_arrays(("zqtype", "zqdata")),
    "typed-arrays-late": lambda: typed_arrays(("zqdata", "zqtype")),
    "falling-keys": falling_keys,
    "message-feed": message_feed,
    "outlines": outlines,
    "small-arrays": small_arrays,
}
INSTALLATIONS = {
    "install-100": lambda root: install(root, 100),
    "install-5000": lambda root: install(root, 5000),
    "install-100000": lambda root: install(root, 100_000, proven=0.1),
}
LARGEST = ("products-20000", "products-100000", "install-100000")


def make(folder, brief):
    for name, text in TEXTS.items():
        if not (brief and name in LARGEST):
            write(folder / f"{name}.json", text())
    for name, fill in INSTALLATIONS.items():
        if not (brief and name in LARGEST):
            fill(folder / name)


def main():
    parser = argparse.ArgumentParser(description="Generates the benchmark's texts and installations.")
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--brief", action="store_true", help="leave out the largest")
    options = parser.parse_args()
    stamp = options.folder / "stamp"
    whole = hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()
    wanted = f"{whole} brief" if options.brief else whole
    found = stamp.read_text() if stamp.exists() else None
    if found in (wanted, whole):
        return
    if found:  # filled by another version, or in brief; a folder without a stamp isn't ours to empty
        shutil.rmtree(options.folder)
    make(options.folder, options.brief)
    write(stamp, wanted)


if __name__ == "__main__":
    main()
