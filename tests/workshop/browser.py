"""A browser without a window, driven by the WebDriver protocol."""

import base64
import contextlib
import json
import os
import re
import subprocess
import urllib.request

# The standard's name of the key that holds the id of an element.
ELEMENT = 'element-6066-11e4-a52e-4f735466cecf'
KEYS = {'Enter': '\ue007', 'Escape': '\ue00c', 'Down': '\ue015', 'Up': '\ue013', 'Tab': '\ue004'}


class Browser(contextlib.AbstractContextManager):
    """Opens no page from the net: every host name is unknown to it."""

    def __init__(self, driver='chromedriver'):
        self.process = subprocess.Popen([driver, '--port=0'], stdout=subprocess.PIPE, text=True)
        for line in self.process.stdout:
            port = re.search(r'successfully on port (\d+)', line)
            if port:
                break
        else:
            raise RuntimeError('the driver has not started')
        self.base = f'http://127.0.0.1:{port[1]}/session'
        arguments = ['--headless=new', '--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage',
                     '--window-size=1200,900', '--host-resolver-rules=MAP * ~NOTFOUND']
        started = self._send('POST', '', {'capabilities': {'alwaysMatch': {
            'browserName': 'chrome', 'goog:chromeOptions': {'args': arguments},
            'goog:loggingPrefs': {'browser': 'ALL'}}}})
        self.base += '/' + started['sessionId']

    def __exit__(self, *error):
        with contextlib.suppress(OSError):
            self._send('DELETE', '')
        self.process.terminate()
        self.process.wait()

    def _send(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, method=method,
                                         headers={'Content-Type': 'application/json'})
        # A proxy of the environment is not for this machine.
        opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        with opener.open(request, timeout=120) as answer:
            return json.load(answer)['value']

    def open(self, path):
        self._send('POST', '/url', {'url': 'file://' + os.path.abspath(path)})

    def run(self, script, *arguments):
        return self._send('POST', '/execute/sync', {'script': script, 'args': list(arguments)})

    def protocol(self, command, **parameters):
        """Calls a command of the browser's own protocol."""
        return self._send('POST', '/goog/cdp/execute', {'cmd': command, 'params': parameters})

    def type(self, *keys):
        """Types texts, and keys by their names, wherever the focus is."""
        actions = []
        for key in keys:
            for character in [KEYS[key]] if key in KEYS else key:
                actions += [{'type': 'keyDown', 'value': character},
                            {'type': 'keyUp', 'value': character}]
        self._send('POST', '/actions', {'actions': [
            {'type': 'key', 'id': 'keyboard', 'actions': actions}]})

    def click(self, selector):
        found = self._send('POST', '/element', {'using': 'css selector', 'value': selector})
        self._send('POST', f'/element/{found[ELEMENT]}/click', {})

    def messages(self):
        """What was written to the console since the last call."""
        return [entry['message'] for entry in self._send('POST', '/se/log', {'type': 'browser'})]

    def screenshot(self, path):
        with open(path, 'wb') as file:
            file.write(base64.b64decode(self._send('GET', '/screenshot')))

    def print(self, path):
        with open(path, 'wb') as file:
            file.write(base64.b64decode(self._send('POST', '/print', {})))
