"""A small web site on 127.0.0.1 that leaves every kind of mark in the browser that visits it.

The browsers take the server for their proxy: so the site has a name of its own, which can be searched for
afterwards, and whatever else a browser asks for is refused and never leaves this computer.
"""
import http.server
import struct
import threading
import urllib.parse
import zlib

HOST = 'quince-orchard.test'
# What to search a profile for. No mark is part of another one, nor of anything that a browser brings along.
MARKS = {
    'host': HOST,
    'path': 'ripe-fruit-page',
    'title': 'Quinces of the orchard',
    'cookie': 'crumb-7b1d5e',
    'local storage': 'basket-92c4fa',
    'session storage': 'satchel-3e80b6',
    'database': 'pantry-c5577d',
    'form': 'marmalade-d04f19',
    'cached text': 'peelings-81aa3c',
    'download': 'recipe-6fe2a8',
}
START = f'http://{HOST}/'
PAGE = f'{START}{MARKS["path"]}.html'
FORM = f'{START}form.html'
SECOND_PAGE = f'{START}second-{MARKS["path"]}.html'
DOWNLOAD_NAME = f'{MARKS["download"]}.bin'
DOWNLOAD = f'{START}{DOWNLOAD_NAME}'
READY = 'All is stored'  # the title of PAGE once its script has stored everything


def _picture(side):
    def chunk(kind, data):
        return struct.pack('>I', len(data)) + kind + data + struct.pack('>I', zlib.crc32(kind + data))
    rows = b''.join(b'\0' + bytes((x * 7 + y * 13) % 256 for x in range(3 * side)) for y in range(side))
    return (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', side, side, 8, 2, 0, 0, 0)) +
            chunk(b'IDAT', zlib.compress(rows)) + chunk(b'IEND', b''))


def _html(body, title=MARKS['title']):
    return ('text/html; charset=utf-8',
            f'<!doctype html><title>{title}</title><link rel="icon" href="/icon.png"><body>{body}</body>'.encode())


_STORE = f'''
<img src="/picture.png"><p>{MARKS['cached text']}</p>
<script src="/script.js"></script><a href="/form.html">on</a>
<script>
localStorage.setItem('kept', '{MARKS['local storage']}');
sessionStorage.setItem('kept', '{MARKS['session storage']}');
const opening = indexedDB.open('shelf', 1);
opening.onupgradeneeded = () => opening.result.createObjectStore('jars').put('{MARKS['database']}', 1);
opening.onsuccess = () => {{ opening.result.close(); document.title = '{READY}'; }};
</script>'''

_PAGES = {
    '/': _html(f'<a href="/{MARKS["path"]}.html">in</a>'),
    f'/{MARKS["path"]}.html': _html(_STORE),
    f'/second-{MARKS["path"]}.html': _html('<p>the end</p><img src="/picture.png">'),
    '/form.html': _html('<form action="/sent.html"><input name="jam" id="jam"><button id="send">send</button></form>'),
    '/sent.html': _html('<p>thank you</p>', 'Sent'),
    '/script.js': ('text/javascript', f'// {MARKS["cached text"]}\n'.encode() * 800),
    '/icon.png': ('image/png', _picture(16)),
    '/picture.png': ('image/png', _picture(120)),
    f'/{DOWNLOAD_NAME}': ('application/octet-stream', b'a download\n' * 100),
}


class _Handler(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        url = urllib.parse.urlsplit(self.path)
        page = _PAGES.get(url.path) if url.hostname == HOST else None
        if page is None:
            self.send_error(404)
            return
        kind, content = page
        self.send_response(200)
        self.send_header('Content-Type', kind)
        self.send_header('Content-Length', str(len(content)))
        self.send_header('Cache-Control', 'public, max-age=86400')
        if kind == 'application/octet-stream':
            self.send_header('Content-Disposition', f'attachment; filename="{DOWNLOAD_NAME}"')
        elif kind.startswith('text/html'):
            self.send_header('Set-Cookie', f'crumb={MARKS["cookie"]}; Max-Age=864000; Path=/')
        self.end_headers()
        self.wfile.write(content)

    def do_CONNECT(self):
        self.send_error(403)

    do_POST = do_HEAD = do_CONNECT

    def log_message(self, *_):
        pass


class _Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # a browser that ends hangs up in the middle of an answer


def serve():
    """Starts the site in a thread and gives its port."""
    server = _Server(('127.0.0.1', 0), _Handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_address[1]
