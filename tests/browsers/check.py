"""check.py before MACHINE LIST: writes down what lies on drive C: of a machine.
check.py after MACHINE LIST COUNT: compares with that list after a kill of everything that the Firefox and Chrome
tabs offer; COUNT is what that kill counted. Prints 'ok' and 'FAIL' lines, then, for the reader, what the browsers made and what of their traces is left,
and ends with 'check: N passed, N failed'.
"""
import fnmatch
import hashlib
import json
import pathlib
import sys

import web_site

FILE, TREE, PATTERN = 'file', 'every file below', 'files of the pattern'

# What goes: kind, name below the profile folder, and the mark that it must have held before. Without a mark a
# name is one of another version of the browser, or one that no mark gets into; it need not have been there.
CHROME = (
    (FILE, 'Visited Links', None),
    (FILE, 'Cookies', 'host'),
    (FILE, 'Cookies-journal', None),
    (FILE, 'Web Data', 'form'),
    (FILE, 'Login Data', None),
    (FILE, 'Thumbnails', None),
    (FILE, 'Last Session', None),
    (FILE, 'Last Tabs', None),
    (FILE, 'Current Session', None),
    (FILE, 'Current Tabs', None),
    (FILE, 'Top Sites', None),
    (FILE, 'Top Sites-journal', None),
    (TREE, 'Cache', 'cached text'),
    (TREE, 'Media Cache', None),
    (TREE, 'Local Storage', 'local storage'),
    (TREE, 'JumpListIcons', None),
    (TREE, 'JumpListIconsOld', None),
    (TREE, 'Pepper Data/Shockwave Flash/WritableRoot/#SharedObjects', None),
    (TREE, 'databases', None),
    (FILE, 'History', 'path'),
    (PATTERN, 'History Index*', None),
    (FILE, 'History-journal', None),
    (FILE, 'History Provider Cache', None),
    (FILE, 'Network Action Predictor', None),
    (FILE, 'Archived History', None),
    (FILE, 'Archived History-journal', None),
)
FIREFOX_ROAMING = (
    (FILE, 'localstore.rdf', None),
    (FILE, 'localstore-safe.rdf', None),
    (FILE, 'netscape.hst', None),
    (FILE, 'history.dat', None),
    (FILE, 'places.sqlite-journal', None),
    (FILE, 'places.sqlite-stmtjrnl', None),
    (FILE, 'places.sqlite', 'path'),
    (FILE, 'content-prefs.sqlite', None),
    (FILE, 'search.rdf', None),
    (FILE, 'search.dat', None),
    (FILE, 'search.sqlite', None),
    (FILE, 'formhistory.dat', None),
    (FILE, 'formhistory.sqlite', 'form'),
    (FILE, 'signons.txt', None),
    (FILE, 'signons2.txt', None),
    (FILE, 'signons3.txt', None),
    (FILE, 'signons.sqlite', None),
    (FILE, 'cookies.txt', None),
    (FILE, 'cookies.sqlite', 'cookie'),
    (FILE, 'downloads.rdf', None),
    (FILE, 'downloads.sqlite', None),
    (FILE, 'sessionstore.js', None),
    (FILE, 'sessionstore.bak', None),
    (TREE, 'Temp', None),
    (TREE, 'Cache', None),
)
FIREFOX_LOCAL = (
    (TREE, 'Cache', None),
    (TREE, 'cache2', 'cached text'),
    (TREE, 'jumpListCache', None),
    (TREE, 'OfflineCache', None),
    (TREE, 'startupCache', None),
    (TREE, 'thumbnails', None),
)

USER = 'Users/user/AppData/'
USER_DATA = USER + 'Local/Google/Chrome/User Data/'
# The folders that the rules hold for; names that are not there, as run.sh lays the folders out; and what a run
# counts there beside each file and each entry of an emptied folder: in Chrome's profiles 1 for each of the 7
# folders and 1 for each pattern, of which the default one has two.
KILLED = (
    ('Chrome, Default', USER_DATA + 'Default/', CHROME, (), 9),
    ('Chrome, Profile 1', USER_DATA + 'Profile 1/', CHROME, ('Cookies',), 8),
    ('Firefox, roaming', USER + 'Roaming/Mozilla/Firefox/Profiles/first.default/', FIREFOX_ROAMING, (), 0),
    ('Firefox, local', USER + 'Local/Mozilla/Firefox/Profiles/first.default/', FIREFOX_LOCAL, (), 0),
)
# Copies of the same profiles that no rule holds for: all of them must stay.
SPARED = (
    ('Chrome, Profile 10', USER_DATA + 'Profile 10/', CHROME),
    ('Firefox, second roaming', USER + 'Roaming/Mozilla/Firefox/Profiles/second.default/', FIREFOX_ROAMING),
    ('Firefox, second local', USER + 'Local/Mozilla/Firefox/Profiles/second.default/', FIREFOX_LOCAL),
)
# Names of places for traces, for the reader of the report: the marks cannot be read where they are packed or
# encrypted, and one visit does not fill them all.
PLACES_FOR_TRACES = (
    'Network/Cookies*', 'Favicons*', 'Sessions/*', 'Sessions_Encrypted/*', 'Session Storage/*', 'IndexedDB/*',
    'Service Worker/*', 'File System/*', 'WebStorage/*', 'Code Cache/*', 'Shortcuts*', 'Login Data*', 'Web Data*',
    'Account Web Data*', 'Affiliation Database*', 'DIPS*', 'Site Characteristics Database/*', 'Preferences',
    '*Network Persistent State', '*Reporting and NEL*', '*Trust Tokens*', '*TransportSecurity', 'Shared Dictionary/*',
    '*-wal', 'favicons.sqlite*', 'webappsstore.sqlite*', 'storage/default/*', 'storage.sqlite', 'sessionstore*',
    'permissions.sqlite', 'bounce-tracking-protection.sqlite', 'protections.sqlite', 'logins*', 'prefs.js',
    'SiteSecurityServiceState*', 'activity-stream*', 'datareporting/*')


def below(path, folder):
    return path[len(folder):] if path.lower().startswith(folder.lower()) else None


def catches(rule, name):
    """Whether a rule means this name, a path below the profile folder. Windows takes no notice of case."""
    kind, named, _ = rule
    name, named = name.lower(), named.lower()
    if kind == FILE:
        return name == named
    if kind == TREE:
        return name.startswith(named + '/')
    return '/' not in name and fnmatch.fnmatchcase(name, named)


def look(machine):
    """Every file on drive C: with its checksum and the marks in it, and every folder."""
    drive = machine / 'drives' / 'C'
    files, folders = {}, []
    for path in sorted(drive.rglob('*')):
        name = path.relative_to(drive).as_posix()
        if path.is_dir():
            folders.append(name)
            continue
        content = path.read_bytes()
        files[name] = {'sum': hashlib.sha256(content).hexdigest(), 'size': len(content),
                       'marks': [kind for kind, mark in web_site.MARKS.items()
                                 if mark.encode() in content or mark.encode('utf-16-le') in content]}
    lower = [name.lower() for name in (*files, *folders)]
    if len(set(lower)) != len(lower):
        raise SystemExit('Two names differ in nothing but case: no Windows disk holds both.')
    return {'files': files, 'folders': folders}


class Checks:
    def __init__(self):
        self.passed = self.failed = 0

    def check(self, what, faults):
        """faults: what speaks against it; none is a pass."""
        if faults:
            self.failed += 1
            print(f'FAIL {what}')
            for fault in faults:
                print(f'       {fault}')
        else:
            self.passed += 1
            print(f'ok   {what}')


def named_files(files, folder, rules):
    names = {}
    for path in files:
        name = below(path, folder)
        if name is not None and any(catches(rule, name) for rule in rules):
            names[path] = name
    return names


def compare(before, after, counted):
    checks = Checks()
    doomed = {}
    expected = 0
    for title, folder, rules, not_there, always in KILLED:
        named = named_files(before['files'], folder, rules)
        doomed.update(named)
        trees = [rule for rule in rules if rule[0] == TREE]
        expected += always + len(named) + sum(any(catches(tree, below(path, folder)) for tree in trees)
                                              for path in before['folders'] if below(path, folder))
        for rule in rules:
            if rule[2] is None or rule[1] in not_there:
                continue
            held = any(rule[2] in before['files'][path]['marks'] for path, name in named.items() if catches(rule, name))
            checks.check(f'{title}: {rule[1]} held a trace of the visit ({rule[2]})',
                         [] if held else ['it was not there, or the mark was not in it: the browser made no trace'])
        checks.check(f'{title}: all {len(named)} files that the rules name are gone',
                     [f'{path} is still there' for path in named if path in after['files']])
    for title, folder, rules in SPARED:
        named = named_files(before['files'], folder, rules)
        checks.check(f'{title}: its {len(named)} files of such names are as before',
                     ['there are none: this proves nothing'] * (not named) +
                     [f'{path} is gone or changed' for path in named if after['files'].get(path) != before['files'][path]])

    checks.check(f'{expected} traces were counted', [f'it was {counted}'] * (counted != expected))
    others = {path: entry for path, entry in before['files'].items() if path not in doomed}
    checks.check(f'each of the {len(others)} other files is byte for byte as before',
                 [f'{path} is gone or changed' for path, entry in others.items() if after['files'].get(path) != entry])
    checks.check('no file came', [path for path in after['files'] if path not in before['files']])
    emptied = [folder + name for _, folder, rules, _, _ in KILLED for kind, name, _ in rules
               if kind == TREE and folder + name in before['folders']]
    gone = sorted(set(before['folders']) - set(after['folders']))
    checks.check(f'all {len(before["folders"])} folders stay, the {len(emptied)} that were emptied among them',
                 ['no folder was there to be emptied'] * (not emptied) + gone +
                 sorted(set(after['folders']) - set(before['folders'])))
    return checks


def report(before, after):
    print('\nOf the names that the rules know, these were there:')
    for title, folder, rules, _, _ in KILLED:
        print(f'  {title}')
        named = named_files(before['files'], folder, rules)
        for rule in rules:
            hits = [path for path, name in named.items() if catches(rule, name)]
            if hits:
                size = sum(before['files'][path]['size'] for path in hits)
                marks = sorted({mark for path in hits for mark in before['files'][path]['marks']})
                print(f'    {rule[1]}: {len(hits)} files, {size} bytes; marks: {", ".join(marks) or "none"}')
        absent = [rule[1] for rule in rules if not any(catches(rule, name) for name in named.values())]
        print(f'    not made: {", ".join(absent)}')
    print('\nLeft on the drive by these rules:')
    shown = set()
    for title, folder in [(row[0], row[1]) for row in KILLED] + [('Chrome, beside its profiles', USER_DATA)]:
        print(f'  {title}')
        places, rest = {}, 0
        for path, entry in after['files'].items():
            name = below(path, folder)
            if name is None or (folder == USER_DATA and name.startswith(('Default/', 'Profile '))):
                continue
            if (entry['sum'], name) in shown:
                continue  # the same file was told of under another profile
            shown.add((entry['sum'], name))
            marks = entry['marks'] + ['host in its name'] * (web_site.HOST in path)
            if marks:
                print(f'    {name}: {", ".join(marks)}')
            elif entry['size'] and any(fnmatch.fnmatchcase(name, place) for place in PLACES_FOR_TRACES):
                top = name.split('/')[0] + ('/' if '/' in name else '')
                places[top] = places.get(top, 0) + 1
            else:
                rest += 1
        print('    places for traces, with no mark to be read: ' +
              (', '.join(f'{top} ({number})' for top, number in places.items()) or 'none'))
        print(f'    other files: {rest}')


def main():
    if (len(sys.argv), *sys.argv[1:2]) not in ((4, 'before'), (5, 'after')):
        raise SystemExit(__doc__)
    now = look(pathlib.Path(sys.argv[2]))
    if sys.argv[1] == 'before':
        pathlib.Path(sys.argv[3]).write_text(json.dumps(now))
        return 0
    before = json.loads(pathlib.Path(sys.argv[3]).read_text())
    checks = compare(before, now, int(sys.argv[4]))
    report(before, now)
    print(f'\ncheck: {checks.passed} passed, {checks.failed} failed')
    return 1 if checks.failed else 0


if __name__ == '__main__':
    sys.exit(main())
