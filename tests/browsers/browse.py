#!/usr/bin/env python3
"""Has real browsers visit a site of our own and leave their profiles behind: browse.py CHROMIUM_FOLDER FIREFOX_FOLDER.

Both are driven over their own automation protocols, so that they end by themselves with all written."""

import contextlib
import http.server
import json
import os
import socket
import subprocess
import sys
import threading
import time

PATIENCE = 60  # seconds for any one answer
PAGES = ["/", "/quillbarrow-marks-page", "/another?q=quillbarrow-marks-query"]
# What the site leaves in a profile, to be found again in its files.
MARKS = {"cookie": "quillbarrow-marks-cookie", "stored": "quillbarrow-marks-storage", "page": "quillbarrow-marks-page"}

PAGE = """<!DOCTYPE html><html><head><title>quillbarrow-marks-title</title><link rel="icon" href="/favicon.ico">
<script src="/script.js"></script></head><body><img src="/picture.gif"><form action="/another"><input name="q"></form>
<script>localStorage.setItem("key", "%(stored)s"); sessionStorage.setItem("key", "%(stored)s");
indexedDB.open("quillbarrow-marks-database", 1);</script></body></html>""" % MARKS
PICTURE = bytes.fromhex("47494638396101000100800000ffffff00000021f90401000000002c00000000010001000002024401003b")


class Site(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        kinds = {"/favicon.ico": ("image/gif", PICTURE), "/picture.gif": ("image/gif", PICTURE),
                 "/script.js": ("text/javascript", b"// quillbarrow-marks-script " + b"x" * 4000)}
        kind, content = kinds.get(self.path, ("text/html", PAGE.encode()))
        self.send_response(200)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(content)))
        self.send_header("Cache-Control", "max-age=86400")
        self.send_header("Set-Cookie", f"visit={MARKS['cookie']}; Max-Age=86400; Path=/")
        self.end_headers()
        self.wfile.write(content)

    def log_message(self, *_):
        pass


@contextlib.contextmanager
def process(arguments, **options):
    """Ends what it started, whatever happens in between."""
    started = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                               stderr=subprocess.DEVNULL, **options)
    try:
        yield started
    finally:
        if started.poll() is None:
            started.kill()
        started.wait()


def chromium(folder, address):
    """Over a pair of pipes: messages in JSON, each closed by a zero byte."""
    to_browser, commands = os.pipe()
    answers, from_browser = os.pipe()

    def hand_over():  # the browser reads from 3 and writes to 4
        high = [os.dup(to_browser), os.dup(from_browser)]
        os.dup2(high[0], 3)
        os.dup2(high[1], 4)

    arguments = ["chromium", "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage",
                 "--disable-quic", "--no-first-run", "--disable-background-networking", "--disable-component-update",
                 "--disable-sync", "--remote-debugging-pipe", f"--user-data-dir={folder}"]
    with process(arguments, preexec_fn=hand_over, close_fds=False) as browser:
        os.close(to_browser)
        os.close(from_browser)
        pending = bytearray()
        number = 0

        def receive(deadline):
            while b"\0" not in pending:
                if time.monotonic() > deadline:
                    raise TimeoutError("chromium does not answer")
                block = os.read(answers, 65536)
                if not block:
                    raise EOFError("chromium is gone")
                pending.extend(block)
            message, _, rest = bytes(pending).partition(b"\0")
            pending[:] = rest
            return json.loads(message)

        def ask(method, session=None, **parameters):
            nonlocal number
            number += 1
            message = {"id": number, "method": method, "params": parameters}
            if session:
                message["sessionId"] = session
            os.write(commands, json.dumps(message).encode() + b"\0")
            deadline = time.monotonic() + PATIENCE
            while True:
                answer = receive(deadline)
                if answer.get("id") == number:
                    if "error" in answer:
                        raise RuntimeError(f"{method}: {answer['error']}")
                    return answer["result"]

        target = ask("Target.createTarget", url="about:blank")["targetId"]
        session = ask("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        ask("Page.enable", session)
        for page in PAGES:
            ask("Page.navigate", session, url=address + page)
            while ask("Runtime.evaluate", session, expression="document.readyState")["result"]["value"] != "complete":
                time.sleep(0.1)
            time.sleep(1)
        ask("Browser.close")
        browser.wait(PATIENCE)


def firefox(folder, address):
    """Over a socket: messages in JSON, each behind its length and a colon."""
    os.makedirs(folder)
    with socket.socket() as probe:
        probe.bind(("127.0.0.1", 0))
        port = probe.getsockname()[1]
    settings = {"marionette.port": port, "app.update.enabled": False, "browser.shell.checkDefaultBrowser": False,
                "datareporting.policy.dataSubmissionEnabled": False, "browser.startup.homepage_override.mstone": "ignore",
                "browser.sessionstore.interval": 1000, "network.captive-portal-service.enabled": False}
    with open(os.path.join(folder, "user.js"), "w", encoding="ascii") as file:
        for name, value in settings.items():
            file.write(f'user_pref("{name}", {json.dumps(value)});\n')
    with process(["firefox-esr", "--headless", "--no-remote", "--marionette", "--profile", folder]) as browser:
        deadline = time.monotonic() + PATIENCE
        while True:
            try:
                connection = socket.create_connection(("127.0.0.1", port), timeout=PATIENCE)
                break
            except OSError:
                if time.monotonic() > deadline or browser.poll() is not None:
                    raise
                time.sleep(0.2)
        stream = connection.makefile("rb")
        number = 0

        def receive():
            length = b""
            while not length.endswith(b":"):
                byte = stream.read(1)
                if not byte:
                    raise EOFError("firefox is gone")
                length += byte
            return json.loads(stream.read(int(length[:-1])))

        def ask(command, **parameters):
            nonlocal number
            number += 1
            message = json.dumps([0, number, command, parameters])
            connection.sendall(f"{len(message)}:{message}".encode())
            _, _, error, result = receive()
            if error:
                raise RuntimeError(f"{command}: {error['message']}")
            return result

        receive()  # it introduces itself
        ask("WebDriver:NewSession", capabilities={})
        for page in PAGES:
            ask("WebDriver:Navigate", url=address + page)
            time.sleep(1)
        time.sleep(2)
        ask("Marionette:Quit", flags=["eAttemptQuit"])
        connection.close()
        browser.wait(PATIENCE)


def main():
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Site)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    address = f"http://127.0.0.1:{server.server_port}"
    chromium(sys.argv[1], address)
    firefox(sys.argv[2], address)
    server.shutdown()


if __name__ == "__main__":
    main()
