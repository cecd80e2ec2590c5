"""Manuals in a browser: manual_test.py CLUI CHROMEDRIVER EXAMPLES."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

from browser import Browser

CLUI, DRIVER, EXAMPLES = sys.argv[1:4]

# Texts that would be markup, and the Japanese language.
HOSTILE = r'''
(define p (clui-parser-new 0))
(define go (clui-token p "go<b>" "go"))
(define house (clui-token p "家:" 1))
(word-help p go "<script>document.title = 'harm'</script>")
(argument-help p house 1 "名前\"><img src=x onerror=document.title='harm'>" "</article>" 1 20)
(argument-values p house 1 '("<i>大きい</i>" "小さい"))
(clui-set-alias p "</script>" "<img src=x onerror=document.title='harm'>")
(clui-set-syntax p (clui-oneof go (clui-syntax house go)))
'''


def shown(browser, what='main article'):
    return browser.run('''return [...document.querySelectorAll(arguments[0])]
        .filter((each) => each.getClientRects().length > 0).map((each) => each.id)''', what)


class Manual(unittest.TestCase):
    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())

    def open(self, language, *options):
        page = pathlib.Path(self.folder, 'manual.html')
        with page.open('wb') as file:
            subprocess.run([CLUI, '--manual', *options, language], stdout=file, check=True,
                           cwd=pathlib.Path(language).parent)
        BROWSER.open(page)

    def tearDown(self):
        self.assertEqual(BROWSER.messages(), [])

    def test_search_finds_words_and_enter_leads_to_the_command(self):
        self.open(EXAMPLES + '/drafting/drafting.scm')
        everything = shown(BROWSER)
        self.assertGreater(len(everything), 30)
        BROWSER.type('/', 'HINGED')
        self.assertEqual(shown(BROWSER), ['c-door'])
        self.assertIn('1 found', BROWSER.run("return document.querySelector('#status').textContent"))
        BROWSER.type('Enter')
        self.assertEqual(BROWSER.run('return location.hash'), '#c-door')
        self.assertTrue(BROWSER.run("return document.activeElement.closest('#c-door') !== null"))
        BROWSER.type('Escape')
        self.assertEqual(shown(BROWSER), everything)
        self.assertEqual(BROWSER.run('return document.activeElement.id'), 'search')
        BROWSER.type('no such thing')
        self.assertEqual(shown(BROWSER), [])

    def test_arrows_and_links_lead_to_commands(self):
        self.open(EXAMPLES + '/drafting/drafting.scm')
        BROWSER.type('/', 'stairs', 'Down', 'Enter')
        self.assertEqual(BROWSER.run('return location.hash'), '#c-stairs-to-steps')
        # A link to a command that is hidden shows it.
        BROWSER.run("location.hash = '#c-circle-radius'")
        self.assertEqual(BROWSER.run("return document.querySelector('#search').value"), '')
        BROWSER.click('nav a[href="#c-save"]')
        top = BROWSER.run("return document.querySelector('#c-save').getBoundingClientRect().top")
        self.assertLess(abs(top), 700)

    def test_each_syntax_that_a_text_sets_has_a_chapter(self):
        self.open(EXAMPLES + '/router/router.scm', '-e', 'configure terminal')
        groups = BROWSER.run("return [...document.querySelectorAll('h2')].map((h) => h.textContent)")
        self.assertEqual(groups[0], 'Commands')
        self.assertIn('Commands after \u201cconfigure terminal\u201d', groups)
        ids = BROWSER.run("return [...document.querySelectorAll('[id]')].map((each) => each.id)")
        self.assertEqual(len(ids), len(set(ids)))

    def test_texts_of_the_language_are_harmless_and_whole(self):
        language = pathlib.Path(self.folder, 'hostile.scm')
        language.write_text(HOSTILE, encoding='utf-8')
        self.open(str(language))
        self.assertEqual(BROWSER.run('return document.title'), 'hostile')
        self.assertEqual(BROWSER.run("return document.querySelectorAll('script, img').length"), 1)
        text = BROWSER.run("return document.querySelector('main').textContent")
        for part in ("<script>document.title = 'harm'</script>", '</article>', '<i>大きい</i>',
                     '名前"><img', '1 to 20', '</script>'):
            self.assertIn(part, text)
        BROWSER.type('/', '大きい', 'Enter')
        self.assertEqual(BROWSER.run('return decodeURIComponent(location.hash)'), '#c-家-go-b')

    def test_dark_and_print(self):
        self.open(EXAMPLES + '/drafting/drafting.scm')
        colour = "return getComputedStyle(document.body).backgroundColor"
        light = BROWSER.run(colour)
        BROWSER.protocol('Emulation.setEmulatedMedia',
                         features=[{'name': 'prefers-color-scheme', 'value': 'dark'}])
        self.assertNotEqual(BROWSER.run(colour), light)
        BROWSER.protocol('Emulation.setEmulatedMedia', media='print', features=[])
        self.assertEqual(shown(BROWSER, 'nav, input'), [])
        BROWSER.protocol('Emulation.setEmulatedMedia', media='', features=[])


if __name__ == '__main__':
    with Browser(DRIVER) as BROWSER:
        unittest.main(argv=sys.argv[:1])
