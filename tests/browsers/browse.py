"""browse.py WORK: lets Chromium and Firefox browse a small web site, each with a new profile.

Leaves WORK/chromium (a user data folder), WORK/firefox (a profile) and WORK/downloads. Prints one 'ok' or
'FAIL' line for each browser: ok if it visited all pages and came to its end by itself.
"""
import contextlib
import fcntl
import json
import os
import pathlib
import signal
import socket
import subprocess
import sys
import time
import traceback

import web_site

LIMIT = 60  # seconds for any one answer of a browser


class Browser:
    """A browser process in a process group of its own, which ends with the 'with' that it stands in."""

    def __init__(self, work, name, command, **options):
        home = work / 'home'
        home.mkdir(exist_ok=True)
        # Nothing of the user's own settings goes in, nothing comes out: home, display and bus are not passed on.
        environment = {'PATH': os.environ['PATH'], 'HOME': str(home), 'LANG': 'C.UTF-8', 'TMPDIR': str(home)}
        self._log = open(work / f'{name}.log', 'wb')
        self.process = subprocess.Popen(command, env=environment, stdin=subprocess.DEVNULL, stdout=self._log,
                                        stderr=self._log, start_new_session=True, **options)

    def wait_for_end(self):
        status = self.process.wait(LIMIT)
        if status != 0:
            raise RuntimeError(f'ended with status {status}')
        # The profile is complete only when the last helper process let go of it.
        wait_until(lambda: not group_lives(self.process.pid), 'the helper processes still run')

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if group_lives(self.process.pid):
            os.killpg(self.process.pid, signal.SIGKILL)
        self.process.wait()
        self._log.close()


def group_lives(group):
    try:
        os.killpg(group, 0)
        return True
    except ProcessLookupError:
        return False


def wait_until(condition, otherwise):
    end = time.monotonic() + LIMIT
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise TimeoutError(otherwise)
        time.sleep(0.05)


class DevTools:
    """Chromium's remote debugging over a pair of pipes: JSON messages that end with a zero byte."""

    def __init__(self, to_browser, from_browser):
        self._out, self._in, self._buffer = to_browser, from_browser, b''
        os.set_blocking(from_browser, False)
        self._last, self._events = 0, []
        self.session = None

    def _receive(self):
        def message():
            if b'\0' not in self._buffer:
                try:
                    data = os.read(self._in, 1 << 16)
                except BlockingIOError:
                    return None
                if not data:
                    raise EOFError('the browser closed its pipe')
                self._buffer += data
            return b'\0' in self._buffer
        wait_until(message, 'no message from the browser')
        text, self._buffer = self._buffer.split(b'\0', 1)
        return json.loads(text)

    def call(self, method, **params):
        self._last += 1
        message = {'id': self._last, 'method': method, 'params': params}
        if self.session and not method.startswith(('Browser.', 'Target.')):
            message['sessionId'] = self.session
        os.write(self._out, json.dumps(message).encode() + b'\0')
        while True:
            answer = self._receive()
            if answer.get('id') == self._last:
                if 'error' in answer:
                    raise RuntimeError(f'{method}: {answer["error"]}')
                return answer['result']
            self._events.append(answer.get('method'))

    def wait_for_event(self, method):
        while method not in self._events:
            self._events.append(self._receive().get('method'))
        self._events.clear()

    def evaluate(self, expression):
        return self.call('Runtime.evaluate', expression=expression, returnByValue=True)['result'].get('value')

    def visit(self, url):
        self._events.clear()
        failure = self.call('Page.navigate', url=url).get('errorText')
        if failure:
            raise RuntimeError(f'{url}: {failure}')
        self.wait_for_event('Page.loadEventFired')


@contextlib.contextmanager
def chromium(work, *options):
    """A Chromium with the profile WORK/chromium, and its DevTools at its first page."""
    browser_reads, to_browser = os.pipe()
    from_browser, browser_writes = os.pipe()
    # Numbers that cannot be in the way of 3 and 4, at which the browser expects its ends.
    ends = [fcntl.fcntl(fd, fcntl.F_DUPFD, 20) for fd in (browser_reads, browser_writes)]
    # Without its sandbox, since that needs rights which a container does not give; only our own pages are shown.
    command = ['chromium', '--headless=new', '--no-sandbox', '--disable-gpu', '--disable-quic',
               '--disable-dev-shm-usage', '--no-first-run', '--no-default-browser-check', '--disable-breakpad',
               '--disable-background-networking', '--disable-component-update', '--disable-sync',
               '--password-store=basic', '--remote-debugging-pipe', *options,
               f'--user-data-dir={work / "chromium"}', 'about:blank']
    browser = Browser(work, 'chromium',
                      ['bash', '-c', f'exec "$@" 3<&{ends[0]} 4>&{ends[1]} {ends[0]}<&- {ends[1]}>&-', 'bash', *command],
                      pass_fds=ends)
    for fd in (browser_reads, browser_writes, *ends):
        os.close(fd)
    with browser:
        tools = DevTools(to_browser, from_browser)
        pages = wait_until(lambda: [t for t in tools.call('Target.getTargets')['targetInfos'] if t['type'] == 'page'],
                           'no page was opened')
        tools.session = tools.call('Target.attachToTarget', targetId=pages[0]['targetId'], flatten=True)['sessionId']
        tools.call('Page.enable')
        yield tools
        tools.call('Browser.close')
        browser.wait_for_end()
    os.close(to_browser)
    os.close(from_browser)


def browse_with_chromium(work, port):
    with chromium(work, f'--proxy-server=http://127.0.0.1:{port}') as tools:
        tools.call('Browser.setDownloadBehavior', behavior='allow', downloadPath=str(work / 'downloads'))
        tools.visit(web_site.START)
        tools.visit(web_site.PAGE)
        wait_until(lambda: tools.evaluate('document.title') == web_site.READY, 'the page stored nothing')
        tools.visit(web_site.FORM)
        tools.evaluate('document.getElementById("jam").focus()')
        for letter in web_site.MARKS['form']:
            tools.call('Input.dispatchKeyEvent', type='char', text=letter)
        tools.call('Input.dispatchKeyEvent', type='keyDown', key='Enter', code='Enter', windowsVirtualKeyCode=13,
                   text='\r')
        tools.wait_for_event('Page.loadEventFired')
        if tools.evaluate('document.title') != 'Sent':
            raise RuntimeError('the form was not sent')
        tools.evaluate(f'location.href = "{web_site.DOWNLOAD}"')
        wait_until((work / 'downloads' / web_site.DOWNLOAD_NAME).exists, 'nothing was downloaded')
        tools.visit(web_site.SECOND_PAGE)


class Marionette:
    """Firefox's remote control: a JSON list, with its length and a colon before it, each way."""

    def __init__(self, port):
        self._socket = socket.create_connection(('127.0.0.1', port), LIMIT)
        self._stream = self._socket.makefile('rwb')
        self._last = 0
        self._receive()  # the greeting

    def _receive(self):
        length = b''
        while not length.endswith(b':'):
            byte = self._stream.read(1)
            if not byte:
                raise EOFError('the browser closed its connection')
            length += byte
        return json.loads(self._stream.read(int(length[:-1])))

    def call(self, name, **params):
        self._last += 1
        message = json.dumps([0, self._last, name, params]).encode()
        self._stream.write(b'%d:%s' % (len(message), message))
        self._stream.flush()
        _, _, error, result = self._receive()
        if error:
            raise RuntimeError(f'{name}: {error["error"]}: {error["message"]}')
        return result

    def title(self):
        return self.call('WebDriver:GetTitle')['value']

    def find(self, css):
        element = self.call('WebDriver:FindElement', using='css selector', value=css)['value']
        return next(iter(element.values()))

    def close(self):
        self._stream.close()
        self._socket.close()


def browse_with_firefox(work, port):
    profile = work / 'firefox'
    profile.mkdir()
    settings = {
        'network.proxy.type': 1, 'network.proxy.http': '127.0.0.1', 'network.proxy.http_port': port,
        'network.proxy.ssl': '127.0.0.1', 'network.proxy.ssl_port': port, 'network.proxy.allow_hijacking_localhost': False,
        'marionette.port': 0,
        # Else the remote control turns off much of what leaves traces, to make its runs alike.
        'remote.prefs.recommended': False,
        'browser.download.folderList': 2, 'browser.download.dir': str(work / 'downloads'),
        'datareporting.policy.dataSubmissionEnabled': False, 'browser.shell.checkDefaultBrowser': False,
        'dom.security.https_first': False,
    }
    (profile / 'user.js').write_text(''.join(f'user_pref({json.dumps(k)}, {json.dumps(v)});\n'
                                             for k, v in settings.items()))
    port_file = profile / 'MarionetteActivePort'
    with Browser(work, 'firefox', ['firefox-esr', '--headless', '--no-remote', '--marionette', '--profile', str(profile),
                                   'about:blank']) as browser:
        def port_of_browser():
            if browser.process.poll() is not None:
                raise RuntimeError('ended before it listened')
            text = port_file.read_text().strip() if port_file.exists() else ''
            return int(text) if text else None
        tools = Marionette(wait_until(port_of_browser, 'does not listen'))
        tools.call('WebDriver:NewSession', capabilities={})
        tools.call('WebDriver:Navigate', url=web_site.START)
        tools.call('WebDriver:Navigate', url=web_site.PAGE)
        wait_until(lambda: tools.title() == web_site.READY, 'the page stored nothing')
        tools.call('WebDriver:Navigate', url=web_site.FORM)
        tools.call('WebDriver:ElementSendKeys', id=tools.find('#jam'), text=web_site.MARKS['form'])
        tools.call('WebDriver:ElementClick', id=tools.find('#send'))
        wait_until(lambda: tools.title() == 'Sent', 'the form was not sent')
        tools.call('WebDriver:ExecuteScript', script=f'location.href = "{web_site.DOWNLOAD}"', args=[])
        wait_until((work / 'downloads' / web_site.DOWNLOAD_NAME).exists, 'nothing was downloaded')
        tools.call('WebDriver:Navigate', url=web_site.SECOND_PAGE)
        tools.call('Marionette:Quit', flags=['eAttemptQuit'])
        tools.close()
        browser.wait_for_end()
    # The remote control is ours, not the browser's.
    (profile / 'user.js').unlink()


def main():
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # so that the browsers end with this script
    work = pathlib.Path(sys.argv[1]).resolve()
    port = web_site.serve()
    status = 0
    for name, browse in (('Chromium', browse_with_chromium), ('Firefox', browse_with_firefox)):
        downloads = work / 'downloads'
        downloads.mkdir()
        try:
            browse(work, port)
            print(f'ok   {name} visited the pages and ended by itself')
        except Exception:
            traceback.print_exc(file=sys.stdout)
            log = work / f'{name.lower()}.log'
            if log.exists():
                print(log.read_text(errors='replace')[-3000:])
            print(f'FAIL {name} did not come through')
            status = 1
        downloads.rename(work / f'downloads-{name.lower()}')
        sys.stdout.flush()
    return status


if __name__ == '__main__':
    sys.exit(main())
