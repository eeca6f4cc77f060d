#!/usr/bin/env python3
"""Puts the profiles of real browsers into a machine, and compares the machine before and after a run.

profiles.py place MACHINE CHROMIUM_FOLDER FIREFOX_FOLDER
profiles.py snapshot MACHINE FILE
profiles.py compare MACHINE FILE COUNTS     COUNTS: what the two runs counted, Firefox first
"""

import fnmatch
import hashlib
import json
import os
import shutil
import stat
import sys

from browse import MARKS

USER = "Users/user/AppData/"
CHROME = USER + "Local/Google/Chrome/User Data"
FIREFOX = USER + "Roaming/Mozilla/Firefox/Profiles/marks.default"
FIREFOX_LOCAL = USER + "Local/Mozilla/Firefox/Profiles/marks.default"
OWN = USER + "Local/Quillbarrow/"

# Firefox keeps these apart from the rest on Windows; in one folder where the profile was named to it.
KEPT_LOCALLY = ["cache2", "startupCache", "thumbnails", "safebrowsing", "OfflineCache", "jumpListCache"]

# What a run removes, by folder: files by name, files by pattern, and folders that are emptied. `always` counts
# whatever was there, beside each file and each entry of an emptied folder.
RULES = {
    "chromium": [{
        "folder": CHROME + "/Default",
        "files": ["Visited Links", "History", "History-journal", "History Provider Cache", "Network Action Predictor",
                  "Top Sites", "Top Sites-journal", "Cookies", "Cookies-journal", "Web Data", "Login Data",
                  "Archived History", "Archived History-journal", "Thumbnails", "Last Session", "Last Tabs",
                  "Current Session", "Current Tabs"],
        "patterns": ["History Index*"],
        "folders": ["Cache", "Media Cache", "Local Storage", "JumpListIcons", "JumpListIconsOld", "databases",
                    "Pepper Data/Shockwave Flash/WritableRoot/#SharedObjects"],
        "always": 7 + 2,
        # A profile without these would prove nothing.
        "must_be": ["History", "Cookies", "Top Sites", "Web Data", "Login Data", "Cache/*", "Local Storage/*"],
    }],
    "firefox": [{
        "folder": FIREFOX,
        "files": ["localstore.rdf", "localstore-safe.rdf", "netscape.hst", "history.dat", "places.sqlite-journal",
                  "places.sqlite-stmtjrnl", "places.sqlite", "content-prefs.sqlite", "search.rdf", "search.dat",
                  "search.sqlite", "formhistory.dat", "formhistory.sqlite", "signons.txt", "signons2.txt",
                  "signons3.txt", "signons.sqlite", "cookies.txt", "cookies.sqlite", "downloads.rdf",
                  "downloads.sqlite", "sessionstore.js", "sessionstore.bak"],
        "patterns": [],
        "folders": ["Temp", "Cache"],
        "always": 0,
        "must_be": ["places.sqlite", "cookies.sqlite", "content-prefs.sqlite"],
    }, {
        "folder": FIREFOX_LOCAL,
        "files": [],
        "patterns": [],
        "folders": ["Cache", "cache2", "jumpListCache", "OfflineCache", "startupCache", "thumbnails"],
        "always": 0,
        "must_be": ["cache2/entries/*", "startupCache/*"],
    }],
}

failures = 0
checks = 0


def check(held, what):
    global failures, checks
    checks += 1
    failures += not held
    print(("ok   " if held else "FAIL ") + what)


def copy(source, target):
    """Plain files and folders alone: a browser here also leaves links and sockets, which no Windows disk has."""
    os.makedirs(target, exist_ok=True)
    for entry in os.scandir(source):
        place = os.path.join(target, entry.name)
        mode = entry.stat(follow_symlinks=False).st_mode
        if stat.S_ISDIR(mode):
            copy(entry.path, place)
        elif stat.S_ISREG(mode):
            shutil.copyfile(entry.path, place)


def place(machine, chromium, firefox):
    drive = os.path.join(machine, "drives/C")
    copy(chromium, os.path.join(drive, CHROME))
    for name in os.listdir(firefox):
        below = FIREFOX_LOCAL if name in KEPT_LOCALLY else FIREFOX
        source = os.path.join(firefox, name)
        if os.path.isdir(source):
            copy(source, os.path.join(drive, below, name))
        elif os.path.isfile(source) and not os.path.islink(source):
            os.makedirs(os.path.join(drive, below), exist_ok=True)
            shutil.copyfile(source, os.path.join(drive, below, name))
    with open(os.path.join(drive, FIREFOX, "../../profiles.ini"), "w", encoding="ascii", newline="\r\n") as ini:
        ini.write("[General]\nStartWithLastProfile=1\n\n[Profile0]\nName=default\nIsRelative=1\n"
                  "Path=Profiles/marks.default\n")


def snapshot(machine):
    drive = os.path.join(machine, "drives/C")
    found = {}
    for folder, folders, files in os.walk(drive):
        for name in folders:
            found[os.path.relpath(os.path.join(folder, name), drive)] = "folder"
        for name in files:
            path = os.path.join(folder, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, drive)] = hashlib.sha256(file.read()).hexdigest()
    return found


def goes(path, rule):
    """Whether the run is to take this path, which is no folder."""
    start = rule["folder"].lower() + "/"
    if not path.lower().startswith(start):
        return False
    name = path.lower()[len(start):]
    return (any(name == known.lower() for known in rule["files"])
            or "/" not in name and any(fnmatch.fnmatchcase(name, pattern.lower()) for pattern in rule["patterns"])
            or any(name.startswith(folder.lower() + "/") for folder in rule["folders"]))


def expected_count(before, rules):
    count = 0
    for rule in rules:
        count += rule["always"]
        for path, content in before.items():
            emptied = any(path.lower().startswith(f"{rule['folder']}/{folder}/".lower()) for folder in rule["folders"])
            count += emptied or content != "folder" and any(
                path.lower() == f"{rule['folder']}/{name}".lower() for name in rule["files"])
    return count


def compare(machine, file, counts):
    with open(file, encoding="utf-8") as saved:
        before = json.load(saved)
    after = snapshot(machine)
    for browser, rules in RULES.items():
        for rule in rules:
            for pattern in rule["must_be"]:
                made = fnmatch.filter(before, f"{rule['folder']}/{pattern}")
                check(bool(made), f"{browser} made {pattern}")
        named = [path for path, content in before.items() if content != "folder"
                 and any(goes(path, rule) for rule in rules)]
        left = [path for path in named if path in after]
        check(not left, f"{browser}: all {len(named)} files that are named are gone {left}")
        count = expected_count(before, rules)
        check(counts[browser] == count, f"{browser}: {counts[browser]} traces were counted, {count} by the rules")
    ruled = [rule for rules in RULES.values() for rule in rules]
    damage = [path for path, content in before.items()
              if after.get(path) != content and not (content != "folder" and any(goes(path, rule) for rule in ruled))]
    check(not damage, f"all else stays byte for byte, and every folder {damage}")
    new = [path for path in after if path not in before and not (path + "/").startswith(OWN)]
    check(not new, f"nothing new but the program's own files {new}")

    print("     What the browsers leave that still holds what was visited, stored or set:")
    drive = os.path.join(machine, "drives/C")
    for path, content in sorted(after.items()):
        if content == "folder" or not path.startswith((CHROME, FIREFOX, FIREFOX_LOCAL)):
            continue
        with open(os.path.join(drive, path), "rb") as left_file:
            text = left_file.read()
        marks = [name for name, mark in MARKS.items() if mark.encode() in text or mark.encode("utf-16-le") in text]
        if marks:
            print(f"     {path[len(USER):]}: {', '.join(marks)}")
    return failures == 0


def main():
    command, machine = sys.argv[1:3]
    if command == "place":
        place(machine, *sys.argv[3:5])
    elif command == "snapshot":
        with open(sys.argv[3], "w", encoding="utf-8") as file:
            json.dump(snapshot(machine), file)
    elif command == "compare":
        firefox, both = (int(count) for count in sys.argv[4:6])
        compare(machine, sys.argv[3], {"firefox": firefox, "chromium": both - firefox})
        print(f"browsers: {checks - failures} passed, {failures} failed")
        sys.exit(failures != 0)


if __name__ == "__main__":
    main()
