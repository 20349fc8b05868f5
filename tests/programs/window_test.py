"""Uses the simulated phone in a window as a person does, on real X servers.

usage: window_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import ctypes
import os
import re
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
from device import LUMORA
from session import X11Session, needs_x11

PHONE = (390, 844)
# The codes of keys by their place; the characters are those of a US layout.
KEYS = {'Escape': 9, 'F1': 67, 'Shift': 50, 'l': 46, '-': 20, '/': 61, '7': 16, 'Left': 113, 'Up': 111}


class Hand:
    """The mouse and the keyboard of an X server."""

    def __init__(self, server):
        self.server = server
        self.test = ctypes.CDLL('libXtst.so.6')

    def move(self, x, y):
        self.test.XTestFakeMotionEvent(self.server.display, -1, round(x), round(y), 0)

    def button(self, is_down):
        self.test.XTestFakeButtonEvent(self.server.display, 1, is_down, 0)
        self.server.xlib.XSync(self.server.display, 0)

    def drag(self, start, end):
        """Presses at the start and releases at the end; a tap if both are the same."""
        self.move(*start)
        self.button(True)
        for step in range(1, 6):
            self.move(*(one + (other - one) * step / 5 for one, other in zip(start, end)))
        self.button(False)

    def press(self, *names):
        """Presses the keys one after the other and releases them."""
        for is_down, order in ((True, names), (False, reversed(names))):
            for name in order:
                self.test.XTestFakeKeyEvent(self.server.display, KEYS[name], is_down, 0)
        self.server.xlib.XSync(self.server.display, 0)


@needs_x11
class Window(X11Session):
    def show_window(self, *words):
        window = self.show(LUMORA, 'run', '--root', self.root, '--display', 'window', *words)
        self.ok('wait', '--timeout', '30')
        return window

    def geometry(self):
        """The window's corner and size."""
        text = self.in_session('xwininfo', '-name', 'Lumora')
        return [int(re.search(name + r': +(-?\d+)', text)[1])
                for name in ('Absolute upper-left X', 'Absolute upper-left Y', 'Width', 'Height')]

    def pixel_of(self, x, y, size=PHONE):
        """Where a point of the screen is shown."""
        left, top, width, height = self.geometry()
        return left + width / 2 + x - size[0] / 2, top + height / 2 + y - size[1] / 2

    def becomes_screen(self, state):
        self.eventually(lambda: self.status()['screen'] == state, self.status)

    def test_obeys_fingers(self):
        hand = Hand(self.start_server('Xvfb', '-screen', '0', '1000x1000x24'))
        self.show_window('--locked', '--keys', 'off', self.gif)

        def drag(start, end):
            hand.drag(self.pixel_of(*start), self.pixel_of(*end))

        for start, end, state in (((200, 500), (200, 500), 'locked'),
                                  ((200, 700), (210, 300), 'home'),
                                  ((200, 700), (200, 300), 'home'),
                                  ((195, 690), (195, 690), 'home'),
                                  ((75, 796), (75, 796), 'app'),
                                  ((200, 400), (200, 100), 'app'),
                                  ((200, 835), (200, 500), 'home'),
                                  ((318, 300), (318, 300), 'app'),
                                  ((195, 833), (195, 833), 'home'),
                                  ((100, 5), (110, 400), 'locked')):
            drag(start, end)
            time.sleep(0.1)
            self.assertEqual(self.status()['screen'], state, (start, end))

    def test_obeys_keys_on_every_layout(self):
        server = self.start_server('Xvfb', '-screen', '0', '1000x1000x24')
        hand = Hand(server)
        shown = 0xfbfaf7

        def has_card():
            return is_near(server.pixel(*map(round, self.pixel_of(60, 400))), shown)

        # Only the first time, and until it is closed.
        self.show_window(self.gif)
        self.eventually(has_card)
        hand.drag(self.pixel_of(75, 796), self.pixel_of(75, 796))
        self.eventually(lambda: not has_card())
        self.becomes_screen('home')
        self.ok('stop')
        self.show_window()
        self.assertFalse(has_card())
        for layout, question in (('us', '/'), ('de', '-'), ('ru', '7')):
            self.in_session('setxkbmap', layout)
            time.sleep(0.2)
            for opening, closing in ((('Shift', question), ('Escape',)), (('F1',), ('F1',))):
                hand.press(*opening)
                self.eventually(has_card, lambda: (layout, opening))
                hand.press(*closing)
                self.eventually(lambda: not has_card(), lambda: (layout, closing))
            for state in ('locked', 'home'):
                hand.press('l')
                self.becomes_screen(state)


def is_near(pixel, color):
    return all(abs((pixel >> shift & 0xff) - (color >> shift & 0xff)) < 20 for shift in (0, 8, 16))


if __name__ == '__main__':
    unittest.main(verbosity=2)
