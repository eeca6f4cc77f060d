"""thumbs.py WORK PROGRAM [PICTURE]: plays the thumbnail audit on machines with caches as Windows lays them out, and
opens its pages in Chromium. Takes a screenshot to PICTURE if asked to.

Prints one 'ok' or 'FAIL' line for each thing that is checked.
"""
import base64
import pathlib
import subprocess
import sys

import browse
import thumb_caches

# Both below and above the size at which a stream leaves the compound file's small sectors.
SIZES = [(32, 24), (64, 48), (96, 64), (200, 150), (96, 96)]
IN_THUMBS_DB = 4

DRAW = '''(([w, h, hue]) => {
  const canvas = document.createElement('canvas');
  canvas.width = w; canvas.height = h;
  const pen = canvas.getContext('2d');
  for (let x = 0; x < w; x += 4) for (let y = 0; y < h; y += 4) {
    pen.fillStyle = `hsl(${hue + x}, ${30 + (x * y) % 70}%, ${30 + (x * 7 + y * 13) % 50}%)`;
    pen.fillRect(x, y, 4, 4);
  }
  return canvas.toDataURL('image/jpeg', 0.9);
})(SIZE)'''

LOGO = pathlib.Path(__file__).resolve().parents[2] / 'src' / 'app' / 'windows' / 'logo.gif'

SCAN = '''user {user}
file "C:\\Program Files\\Quillbarrow\\logo.gif" from "{logo}"
folder 28 {local}
folder 40 {profile}
mkdir {local}
start
click cmdThumbs
advance 1s
expect get Thumbnails_Found is {shown}
expect list lstThumbs has Thumbs.db thumbcache_96.db
choose lstThumbs {single}
get Data_Folder
'''


def check(holds, what):
    print(('ok   ' if holds else 'FAIL ') + what)
    return holds


def make_pictures(tools):
    pictures = []
    for i, (width, height) in enumerate(SIZES):
        url = tools.evaluate(DRAW.replace('SIZE', str([width, height, i * 60])))
        pictures.append(base64.b64decode(url.split(',', 1)[1]))
    return pictures


def open_page(tools, page, drive):
    """Opens a copy of the page whose drive C: is the machine's, and gives the size of each picture of a cache."""
    content = page.read_bytes().replace(b'file://C:', b'file://' + bytes(drive))
    copy = page.with_name('mapped.html')
    copy.write_bytes(content)
    tools.visit('file://' + str(copy))
    return tools.evaluate('Array.from(document.images).filter(i => i.src.includes("/thumbs/t"))'
                          '.map(i => [i.naturalWidth, i.naturalHeight])')


def play(tools, work, program, user, pictures, screenshot):
    machine = work / f'machine-{len(user)}'
    drive = machine / 'drives' / 'C'
    profile = f'C:\\Users\\{user}'
    local = profile + '\\AppData\\Local'
    first, second = pictures[:IN_THUMBS_DB], pictures[IN_THUMBS_DB:]
    caches = {f'{local}\\Pictures\\Thumbs.db': thumb_caches.thumbs_db(first),
              f'{local}\\Microsoft\\Windows\\Explorer\\thumbcache_96.db': thumb_caches.thumb_cache(second)}
    script = work / 'scan.rehearsal'
    lines = []
    for number, (path, content) in enumerate(caches.items()):
        host = work / f'cache{number}'
        host.write_bytes(content)
        lines.append(f'file "{path}" from "{host}"\n')
    script.write_text(''.join(lines) + SCAN.format(user=user, local=local, profile=profile, logo=LOGO,
                                                   shown=len(pictures) + 1, single=1))
    ended = subprocess.run([program, machine, script], capture_output=True, text=True, timeout=120)
    if not check(ended.returncode == 0, f'the audit came to its end for {user}'):
        print(ended.stdout, ended.stderr)
        return
    data = drive.joinpath(*ended.stdout.strip().split('\\')[1:])
    # Inside a compound file the order is that of the container.
    sizes = open_page(tools, data / 'Fernledger_thumbnails.html', drive)
    check(sorted(sizes) == sorted(map(list, SIZES)), f'{user}: the report shows each picture: {sizes}')
    if screenshot:
        tools.call('Emulation.setDeviceMetricsOverride', width=900, height=700, deviceScaleFactor=1, mobile=False)
        shot = tools.call('Page.captureScreenshot', format='png')['data']
        pathlib.Path(screenshot).write_bytes(base64.b64decode(shot))
    sizes = open_page(tools, data / 'Fernledger_thumbdb.html', drive)
    check(sorted(sizes) == sorted(map(list, SIZES[:IN_THUMBS_DB])), f'{user}: the page of one file shows its own: {sizes}')


def main():
    work = pathlib.Path(sys.argv[1]).resolve() / 'thumbs'
    work.mkdir()
    screenshot = sys.argv[3] if len(sys.argv) > 3 else None
    with browse.chromium(work, '--allow-file-access-from-files') as tools:
        pictures = make_pictures(tools)
        for user in ('user', 'José'):
            play(tools, work, sys.argv[2], user, pictures, screenshot if user == 'user' else None)


if __name__ == '__main__':
    main()
