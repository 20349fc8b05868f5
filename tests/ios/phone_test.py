"""Uses the phone's lumora, on GNUstep, with the files and the home screen of the Linux programs.

Both have one device folder. Names that the phone's program posts are posted to the home screen, and
those that the home screen's bus carries arrive at the phone's program.

usage: phone_test.py [Phone.TEST] LUMORA-OF-THE-PHONE FOLDER-OF-THE-LINUX-PROGRAMS
"""
import json
import os
import plistlib
import subprocess
import sys
import threading
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
PHONE = sys.argv.pop(-2)
from device import LUMORA, RED_GREEN, Device, gif

IN_DEVICE = os.path.join(os.path.dirname(os.path.abspath(__file__)), 'in_device.sh')
PAGE = os.path.join(os.path.dirname(os.path.abspath(__file__)),
                    '../../packaging/ios/preference_page.py')
SETTINGS = 'var/mobile/Library/Preferences/com.brightfen.lumorapreferences.plist'
NEEDS_UPDATING = 'com.brightfen.lumora.wallpaperNeedsUpdating'


class Phone(Device):
    def setUp(self):
        super().setUp()
        self.var = os.path.join(self.root, 'var')
        os.makedirs(self.var, exist_ok=True)
        self.watcher = None
        self.names = []
        self.pipes = {}
        for name in ('NAMES_POSTED', 'NAMES_ARRIVING'):
            self.pipes[name] = os.path.join(self.folder, name)
            os.mkfifo(self.pipes[name])

    def tearDown(self):
        if self.watcher:
            self.watcher.terminate()
            self.watcher.wait(20)
            self.forwarding.join(20)
            # Ends the other thread.
            os.write(self.posted, b'\n')
            self.posting.join(20)
            self.watcher.stdout.close()
            os.close(self.posted)
            os.close(self.arriving)
        super().tearDown()

    def connect(self):
        """Starts a home screen, and carries names both ways."""
        self.start()
        self.posted, self.arriving = (os.open(self.pipes[name], os.O_RDWR)
                                      for name in ('NAMES_POSTED', 'NAMES_ARRIVING'))
        self.watcher = subprocess.Popen([LUMORA, '--root', self.root, 'watch'], text=True,
                                        stdout=subprocess.PIPE)
        self.forwarding = threading.Thread(target=self.forward)
        self.posting = threading.Thread(target=self.post)
        self.forwarding.start()
        self.posting.start()
        self.eventually(lambda: self.ok('post', 'first') == '' and 'first' in self.names)

    def forward(self):
        for line in self.watcher.stdout:
            self.names.append(line.split(' ', 1)[1].strip())
            os.write(self.arriving, (self.names[-1] + '\n').encode())

    def post(self):
        with open(self.pipes['NAMES_POSTED'], encoding='utf-8') as names:
            while name := names.readline().strip():
                self.ok('post', name)

    def phone(self, *words):
        """Returns the exit code, stdout and stderr."""
        done = subprocess.run([IN_DEVICE, PHONE, *words], capture_output=True, text=True, timeout=100,
                              cwd=self.folder, env=dict(os.environ, DEVICE_VAR=self.var, **self.pipes))
        return done.returncode, done.stdout, done.stderr

    def linux(self, *words):
        done = subprocess.run([LUMORA, '--root', self.root, *words], capture_output=True, text=True,
                              timeout=100, cwd=self.folder)
        return done.returncode, done.stdout, done.stderr

    def location(self, name):
        return json.loads(self.linux('status', '--json')[1])['locations'][name]

    def test_gives_a_home_screen_wallpapers(self):
        self.connect()
        self.file('cat.gif', RED_GREEN)
        self.assertEqual(self.phone('set', 'cat.gif'), (0, 'shared wallpaper set: 2 frames\n', ''))
        self.eventually(lambda: self.location('shared')['playing'])
        self.assertEqual(self.phone('blur', 'shared', '3'), (0, '2 frames blurred\n', ''))
        self.assertEqual(self.phone('speed', 'shared', '0.5'), (0, '', ''))
        self.eventually(lambda: self.location('shared')['speed'] == 0.5)
        # The shared GIF stays on the other screen only if that is wanted.
        self.file('blue.gif', gif((0, 0, 255)))
        code, text, _ = self.phone('set', 'lockscreen', 'blue.gif', '--keep-other')
        self.assertEqual((code, text), (0, 'home screen wallpaper set: 2 frames\n'
                                           'lock screen wallpaper set: 1 frame\n'))
        self.assertEqual([self.location(name)['frames_in_cache'] for name in
                          ('lockscreen', 'homescreen')], [1, 2])
        self.assertEqual(self.phone('set', '--no-wait', 'cat.gif'), (0, '', ''))
        code, text, _ = self.phone('set', 'homescreen', 'blue.gif')
        self.assertIn('no longer shown on the lock screen', text)
        self.assertIn('homescreen  a GIF (', self.phone('status')[1])
        self.assertEqual(self.phone('remove', 'homescreen'), (0, '', ''))
        self.assertFalse(self.location('homescreen')['set'])
        self.assertIn('all wallpapers hidden', self.phone('remove', 'all')[1])
        self.assertRegex(self.phone('status')[1], 'lockscreen .*hidden')
        # What Linux sets, the phone's program sees.
        self.ok('set', 'shared', self.file('three.gif', gif((0, 0, 255), (0, 255, 0), (255, 0, 0))))
        status = json.loads(self.phone('status', '--json')[1])
        self.assertEqual((status['mode'], status['locations']['shared']['frames'],
                          status['locations']['shared']['speed']), (1, 3, 0.5))

    def test_posts_and_stores_what_linux_does(self):
        self.connect()
        for words in (('mode', 'separate'), ('dock', 'off'), ('alpha', 'shared', '0.5'),
                      ('scaling', 'homescreen', 'cover'), ('speed', 'lockscreen', '2'),
                      ('blur', 'shared', '4'), ('disable',), ('put', 'SHARED_TEXT_FIELD_TEXT', 'x'),
                      ('post', 'com.example.any')):
            with self.subTest(words):
                results = []
                for run in (self.phone, self.linux):
                    path = os.path.join(self.root, SETTINGS)
                    if os.path.exists(path):
                        os.remove(path)
                    before = len(self.names)
                    done = run(*words)
                    run('post', 'end')
                    self.eventually(lambda: 'end' in self.names[before:])
                    stored = None
                    if os.path.exists(path):
                        with open(path, 'rb') as file:
                            stored = plistlib.load(file)
                    results.append((self.names[before:], stored))
                    self.assertEqual((done[0], done[2]), (0, ''))
                self.assertEqual(*results)

    def test_refuses_what_linux_refuses(self):
        self.file('page.gif', b'<!DOCTYPE html>')
        for words in (('speed', 'shared', 'fast'), ('alpha', 'shared', '1.5'), ('speed', 'both', '1'),
                      ('blur', 'shared', '0x10'), ('set',), ('set', 'shared'), ('set', 'none.gif'),
                      ('set', 'page.gif'), ('get', 'NOTHING'), ('put', '', 'x'), ('sett', 'x'),
                      ('mode', 'both'), ('put', 'KEY', 'a\x01'), ('help', 'sped')):
            with self.subTest(words):
                self.assertEqual(self.phone(*words), self.linux(*words))

    def test_page_stores_and_posts_what_the_commands_do(self):
        """Every control has a key of the settings, its default, values that the command for the key takes,
        and the first notification that the command posts."""
        posted = self.pipes['NAMES_POSTED'] = os.path.join(self.folder, 'posted')
        del self.pipes['NAMES_ARRIVING']
        path = os.path.join(self.folder, 'page.plist')
        subprocess.run([sys.executable, '-B', PAGE, path], check=True)
        with open(path, 'rb') as file:
            items = [item for item in plistlib.load(file)['items'] if 'key' in item]
        defaults = json.loads(self.phone('settings', '--json')[1])
        switches = {('ENABLED', 'TRUE'): 'enable', ('ENABLED', 'FALSE'): 'disable',
                    ('DOCK_ENABLED', 'TRUE'): 'dock on', ('DOCK_ENABLED', 'FALSE'): 'dock off',
                    ('MODE_INDEX', '1'): 'mode shared', ('MODE_INDEX', '0'): 'mode separate'}
        words = {'SCALING_MODE': 'scaling', 'GIF_SPEED': 'speed', 'GIF_ALPHA': 'alpha',
                 'GIF_BLUR': 'blur'}
        self.assertEqual(len(items), 15)
        for item in items:
            key = item['key']
            self.assertEqual(item['defaults'] + '.plist', os.path.basename(SETTINGS))
            default = defaults[key]
            text = str(default).upper() if isinstance(default, bool) else default
            self.assertEqual(item['default'], text if isinstance(text, str) else f'{text:g}')
            values = item.get('validValues', [item.get('trueValue'), item.get('falseValue')])
            self.assertIn(item['default'], values)
            self.assertEqual(len(values), len(item.get('validTitles', values)))
            for value in values:
                with open(posted, 'w', encoding='utf-8'):
                    pass
                location, ending = key.split('_', 1) if '_' in key else (key, '')
                line = (switches[key, value] if (key, value) in switches else
                        f'{words[ending]} {location.lower()} {value}').split()
                self.assertEqual(self.phone(*line)[0], 0, line)
                self.assertEqual(self.phone('get', key)[1], value + '\n')
                with open(posted, encoding='utf-8') as file:
                    names = file.read().split()
                self.assertEqual(names[:1], [item['PostNotification']] if 'PostNotification' in item
                                 else [])

    @unittest.skipIf(os.geteuid(), 'needs root')
    def test_works_as_the_owner_of_the_home_screens_files(self):
        self.pipes.clear()
        folder = os.path.join(self.var, 'mobile/Library/Preferences')
        os.makedirs(folder)
        owner = 4321
        for place, _, _ in os.walk(self.var):
            os.chown(place, owner, owner)
        # With all user ids, unlike in_device.sh.
        as_root = ['unshare', '-m', 'sh', '-c', 'umask 077; mount --bind "$0" /var && exec "$@"',
                   self.var, PHONE]
        if subprocess.run(['unshare', '-m', 'true'], check=False).returncode:
            self.skipTest('cannot mount file systems here')
        subprocess.run([*as_root, 'put', 'DOCK_HEIGHT', '96'], check=True)
        stored = os.stat(os.path.join(self.root, SETTINGS))
        self.assertEqual((stored.st_uid, stored.st_gid, oct(stored.st_mode)),
                         (owner, owner, '0o100644'))
        # A file that only root may read is read before.
        gif_of_root = self.file('root.gif', RED_GREEN)
        os.chmod(gif_of_root, 0o600)
        done = subprocess.run([*as_root, 'set', gif_of_root], capture_output=True, text=True)
        self.assertIn('no home screen', done.stderr)

    def test_says_that_no_home_screen_answers(self):
        self.file('cat.gif', RED_GREEN)
        del self.pipes['NAMES_POSTED'], self.pipes['NAMES_ARRIVING']
        code, _, problem = self.phone('set', 'cat.gif')
        self.assertEqual(code, 3)
        self.assertIn('no home screen with Lumora answers; the wallpaper was not changed', problem)
        self.assertEqual(os.listdir(os.path.join(self.var, 'mobile/Media/Downloads')), [])
        # If the home screen wakes up later, nothing tells it to delete the old wallpaper.
        self.assertEqual(self.phone('get', 'SAFARI_DIRECTORY'), (0, '\n', ''))
        self.phone('put', 'SHARED_WALLPAPER_SET', 'TRUE')
        code, text, problem = self.phone('remove', 'all')
        self.assertEqual((code, text), (3, ''))
        self.assertIn('the wallpapers were not hidden', problem)


if __name__ == '__main__':
    if subprocess.run([IN_DEVICE, 'true']).returncode == 77:
        sys.exit(77)
    unittest.main(verbosity=2)
