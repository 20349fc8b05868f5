"""Tests the programs from outside, as a user or a script runs them.

usage: command_line_test.py DIRECTORY-OF-THE-PROGRAMS
"""
import fcntl
import gzip
import json
import os
import plistlib
import pty
import re
import resource
import select
import shutil
import signal
import socket
import stat
import struct
import subprocess
import sys
import time
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture'))
from device import LUMORA, PROGRAMS, RED_GREEN, Device, gif

SCENARIOS = os.path.join(os.path.dirname(os.path.abspath(__file__)), '../../examples/scenarios')
PREFERENCES = 'var/mobile/Library/Preferences/com.brightfen.lumorapreferences.plist'
LIBRARY = 'var/mobile/Library/Lumora'


def dynamic_section(program):
    return subprocess.run(['readelf', '-dW', os.path.join(PROGRAMS, program)],
                          capture_output=True, text=True, check=True).stdout


IS_SANITIZED = 'san.so' in dynamic_section('lumora')


class Binaries(unittest.TestCase):
    @unittest.skipIf(IS_SANITIZED, 'sanitizers add initializers')
    def test_have_one_initializer_in_the_library(self):
        # The other one is in the compiler's startup code.
        self.assertIn('(INIT_ARRAYSZ)       16 (bytes)', dynamic_section('Lumora8.so'))

    @unittest.skipIf(IS_SANITIZED, 'sanitizers replace the hardening')
    def test_are_hardened_and_relocatable(self):
        paths = '[$ORIGIN:$ORIGIN/../'

        for program in ('lumora', 'springboard', 'Lumora8.so', 'liblumora-platform.so'):
            dynamic = dynamic_section(program)
            self.assertIn('BIND_NOW', dynamic, program)
            self.assertIn(paths if 'RUNPATH' in dynamic else '', dynamic, program)
            with open(os.path.join(PROGRAMS, program), 'rb') as file:
                symbols = file.read()
            self.assertIn(b'__stack_chk_fail', symbols, program)
            if program in ('lumora', 'springboard'):
                self.assertIn(b'__printf_chk', symbols, program)


class Installation(Device):
    def test_works_wherever_it_is_moved(self):
        prefix = os.path.join(self.folder, 'prefix')
        subprocess.run(['cmake', '--install', os.path.dirname(PROGRAMS), '--prefix', prefix],
                       capture_output=True, check=True)
        moved = os.path.join(self.folder, 'moved')
        os.rename(prefix, moved)
        ran = subprocess.run([os.path.join(moved, 'bin/lumora'), 'run', self.gif, '--for', '1',
                              '--root', self.root, '--display', 'headless'],
                             capture_output=True, text=True, timeout=60)
        self.assertEqual((ran.returncode, ran.stderr), (0, ''))
        self.assertTrue(os.path.exists(self.on_device(LIBRARY + '/Wallpaper_both.gif')))
        self.assertEqual(subprocess.run([LUMORA, '--root', 'here', 'run', '--for', '0', '--display',
                                         'headless'], cwd=moved, stdout=subprocess.DEVNULL,
                                        timeout=60).returncode, 0)
        self.assertEqual(self.ok('help'), self.ok('--help'))
        self.assertEqual(self.ok('help', 'set'), self.ok('set', '--help'))
        commands = re.findall(r'^  ([a-z]+)  ', self.ok('help').split('\nOptions:')[0], re.M)
        with gzip.open(os.path.join(moved, 'share/man/man1/lumora.1.gz'), 'rt') as page:
            self.assertEqual(re.findall(r'^\.SS (\w+)', page.read(), re.M), commands)
        self.checks_completions(moved, set(commands))

    def checks_completions(self, prefix, commands):
        locations = {'shared', 'lockscreen', 'homescreen'}
        folders = {'device', 'moved'}
        files = {'picture.gif'} | folders
        shells = {'bash': self.offers_of_bash, 'zsh': self.offers_of_zsh, 'fish': self.offers_of_fish}
        for shell, offers in shells.items():
            if not shutil.which(shell):
                print(f'no {shell}: its completions are not tested')
                continue
            for line, expected in (('lumora ', commands), ('lumora --root x ', commands),
                                   ('lumora help ', commands),
                                   ('lumora set ', locations | files),
                                   ('lumora set --timeout 5 shared ', files),
                                   ('lumora scaling --root x shared ', {'FIT', 'FILL', 'FULLSCREEN'}),
                                   ('lumora frames picture.gif ', folders),
                                   ('lumora run --idiom ', {'phone', 'pad'}),
                                   ('lumora run --transition ', {'none'}),
                                   ('lumora run --for ', set()),
                                   ('lumora get DOCK', {'DOCK_ENABLED', 'DOCK_HEIGHT'}),
                                   ('lumora run x.gif --back', {'--background', '--backdrop'})):
                found = {word.rstrip('/') for word in offers(prefix, line)}
                if shell == 'bash' and not line.endswith('--back'):
                    found -= {'--root', '--version', '--help'}
                self.assertEqual(found, expected, (shell, line))

    def offers(self, prefix, *words):
        path = os.path.join(prefix, 'bin') + ':' + os.environ['PATH']
        environment = dict(os.environ, PATH=path, HOME=self.folder, LUMORA_ROOT=self.root)
        return subprocess.run(words, capture_output=True, text=True, check=True, timeout=60,
                              cwd=self.folder, env=environment).stdout.splitlines()

    def offers_of_bash(self, prefix, line):
        script = os.path.join(prefix, 'share/bash-completion/completions/lumora')
        words = line.split(' ')
        quoted = ' '.join(f'"{word}"' for word in words)
        offers = self.offers(
            prefix, 'bash', '-c',
            f'. {script}; COMP_WORDS=({quoted}); COMP_CWORD={len(words) - 1}; _lumora; '
            'printf "%s\\n" "${COMPREPLY[@]}"')
        return filter(None, offers)

    def offers_of_zsh(self, prefix, line):
        script = os.path.join(os.path.dirname(os.path.abspath(__file__)), '../fixture/completions.zsh')
        functions = os.path.join(prefix, 'share/zsh/vendor-completions')
        return filter(None, self.offers(prefix, 'zsh', '-f', script, functions, line))

    def offers_of_fish(self, prefix, line):
        script = os.path.join(prefix, 'share/fish/vendor_completions.d/lumora.fish')
        offers = self.offers(prefix, 'fish', '-c', f"source {script}; complete -C '{line}'")
        return (offer.split('\t')[0] for offer in offers)


class CommandWithoutHomeScreen(Device):
    def test_shows_the_usage_on_wrong_use(self):
        for words in ([], ['dance'], ['set', 'shared'], ['set', 'moon', self.gif], ['mode', '3'],
                      ['dock'], ['rotate', 'north'], ['run', '--screen', '3x'], ['advance', '-1'],
                      ['frames', self.gif], ['get'],
                      ['run', '--display', 'window', '--clock', 'manual'],
                      ['scaling', 'shared', 'wide'], ['app', 'open', 'now'], ['advance', 'nan'],
                      ['put', '', 'value'], ['speed', 'shared'], ['alpha', 'shared', '1.01'],
                      ['speed', 'moon', '1'], ['blur', 'shared', '-1'], ['speed', 'shared', '0x1']):
            self.fails(2, *words)
        self.assertIn('must be FIT, FILL or FULLSCREEN, not wide',
                      self.fails(2, 'scaling', 'shared', 'wide'))
        self.assertIn("no command 'dance'\n", self.fails(2, 'dance'))
        for words in (['stauts'], ['help', 'stauts']):
            self.assertIn("no command 'stauts'; did you mean 'status'?", self.fails(2, *words))

    def test_reports_that_no_home_screen_is_running(self):
        for words in (['remove', 'all'], ['lock'], ['unlock'], ['home'], ['app', 'open'], ['screen', 'off'], ['rotate', 'left'], ['stop'],
                      ['screenshot', 'x.png'], ['status'], ['play', self.file('s.txt', b'')],
                      ['post', 'x'], ['watch'], ['views'], ['trace'], ['bus'], ['advance', '1'], ['wait', '--timeout', '0.1']):
            self.assertIn('no home screen is running', self.fails(3, *words))
        self.assertFalse(os.path.exists(self.root))

    def test_checks_files_before_looking_for_a_home_screen(self):
        huge = RED_GREEN[:6] + b'\xff\xff\xff\xff' + RED_GREEN[10:]
        for path, reason in ((self.file('text.gif', b'no picture'), 'it is not a GIF'),
                             (self.file('empty.gif', b''), 'it is empty'),
                             (self.file('web.gif', b'RIFF....WEBPVP8 '), 'it is WebP, not a GIF or PNG'),
                             (self.file('still.gif', b'\xff\xd8\xff\xe0'), 'it is JPEG'),
                             (self.file('film.gif', b'....ftypisom'), 'it is MP4'),
                             (self.file('cut.png', b'\x89PNG\r\n\x1a\n'), 'it is a damaged PNG'),
                             (self.file('page.gif', b'<!DOCTYPE html>'), 'it is a web page'),
                             (self.file('short.gif', RED_GREEN[:3]), 'it is not a GIF'),
                             (self.file('cut.gif', RED_GREEN[:20]), 'it contains no frame'),
                             (self.file('huge.gif', huge), 'it is too large: 65535x65535 pixels'),
                             (self.folder, 'not a regular file'),
                             (os.path.join(self.folder, 'nothing.gif'), 'No such file')):
            self.assertIn(reason, self.fails(1, 'set', 'shared', path))
            self.fails(1, 'run', path)
            self.fails(1, 'frames', '--raw', path)
        self.assertFalse(os.path.exists(self.root))

    def test_reads_and_writes_settings(self):
        settings = {'ENABLED': True, 'DOCK_ENABLED': True, 'DOCK_HEIGHT': 0, 'WALLPAPER_SET': False,
                    'MODE_INDEX': 1, 'LOCATION_INDEX': 0, 'SAFARI_DIRECTORY': '',
                    'SAFARI_OBJECT_URL': ''}
        for place in ('SHARED', 'LOCKSCREEN', 'HOMESCREEN'):
            settings.update({place + end: value for end, value in (
                ('_WALLPAPER_SET', False), ('_GIF_SPEED', 1), ('_GIF_ALPHA', 1), ('_GIF_BLUR', 0),
                ('_SCALING_MODE', 'FIT'), ('_TEXT_FIELD_TEXT', ''))})
        self.assertEqual(json.loads(self.ok('settings', '--json')), settings)
        self.ok('put', 'SHARED_GIF_SPEED', '2.5')
        self.assertEqual(self.ok('get', 'SHARED_GIF_SPEED'), '2.5\n')
        self.ok('disable')
        self.ok('dock', 'off')
        self.ok('mode', 'Separate')
        self.ok('scaling', 'homescreen', 'Cover')
        self.ok('alpha', 'lockscreen', '0.5')
        self.ok('blur', 'homescreen', '3.9')
        with open(self.on_device(PREFERENCES), 'rb') as file:
            self.assertEqual(plistlib.load(file), {
                'SHARED_GIF_SPEED': '2.5', 'ENABLED': 'FALSE', 'DOCK_ENABLED': 'FALSE',
                'MODE_INDEX': '0', 'HOMESCREEN_SCALING_MODE': 'FILL',
                'LOCKSCREEN_GIF_ALPHA': '0.5', 'HOMESCREEN_GIF_BLUR': '3.9'})
        settings = json.loads(self.ok('settings', '--json'))
        self.assertEqual((settings['SHARED_GIF_SPEED'], settings['ENABLED'],
                          settings['MODE_INDEX'], settings['LOCKSCREEN_SCALING_MODE']),
                         (2.5, False, 0, 'FIT'))
        self.ok('dock', 'ON')
        self.assertEqual(self.ok('get', 'DOCK_ENABLED'), 'TRUE\n')
        self.ok('enable')
        self.assertIn('ENABLED                      true', self.ok('settings'))
        self.fails(1, 'get', 'NOTHING')
        self.assertEqual(self.lumora('put', 'KEY', 'a\x01b').returncode, 2)

    def test_sends_no_control_characters_to_a_terminal(self):
        os.makedirs(os.path.dirname(self.on_device(PREFERENCES)))
        self.file('device/' + PREFERENCES, plistlib.dumps({'NAME': 'a\x1b]0;title\x07b'},
                                                          fmt=plistlib.FMT_BINARY))
        ours, terminals = pty.openpty()
        subprocess.run([LUMORA, '--root', self.root, 'get', 'NAME'], stdout=terminals, check=True,
                       timeout=60)
        os.close(terminals)
        shown = os.read(ours, 1000)
        os.close(ours)
        self.assertTrue(shown.startswith(b'a'), shown)
        self.assertNotRegex(shown.strip(), b'[\0-\x1f]')

    def test_fails_if_its_output_cannot_be_written(self):
        with open('/dev/full', 'w', encoding='utf-8') as full:
            for words in (['settings'], ['frames', '--raw', self.gif], ['--version']):
                done = subprocess.run([LUMORA, '--root', self.root, *words], stdout=full)
                self.assertEqual(done.returncode, 1, words)

    def test_prints_a_complete_status(self):
        done = self.lumora('status', '--json')
        self.assertEqual(done.returncode, 3)
        status = json.loads(done.stdout)
        self.assertFalse(status['running'])
        self.assertEqual(status['locations']['shared']['playing'], False)

    def test_writes_frames_only_into_an_empty_directory(self):
        frames = os.path.join(self.folder, 'frames')
        self.ok('frames', self.gif, frames)
        self.assertEqual(sorted(os.listdir(frames)),
                         ['frames', 'frames_0.png', 'frames_1.png', 'frames_durations.plist'])
        with open(os.path.join(frames, 'frames_durations.plist'), 'rb') as file:
            self.assertEqual(plistlib.load(file), ['0.100000', '0.100000'])
        with open(os.path.join(frames, 'frames'), 'rb') as file:
            self.assertEqual(file.read(), RED_GREEN)
        self.assertIn('not empty', self.fails(1, 'frames', self.gif, frames))
        self.assertIn('No such file', self.fails(1, 'frames', self.gif, self.folder + '/no/frames'))
        # A picture is one frame, and the directory may be named like a picture.
        named = os.path.join(self.folder, 'named.png')
        self.ok('frames', os.path.join(frames, 'frames_0.png'), named)
        self.assertEqual(sorted(os.listdir(named)),
                         ['named.png', 'named.png_0.png', 'named.png_durations.plist'])
        # An existing directory is not replaced.
        here = os.path.join(self.folder, 'here')
        os.mkdir(here, 0o700)
        before = os.stat(here)
        subprocess.run([LUMORA, 'frames', self.gif, '.'], cwd=here, check=True, capture_output=True)
        self.assertEqual((os.stat(here).st_ino, os.stat(here).st_mode),
                         (before.st_ino, before.st_mode))
        self.assertEqual(len(os.listdir(here)), 4)
        raw = subprocess.run([LUMORA, 'frames', '--raw', self.gif], capture_output=True)
        self.assertEqual(raw.stdout, b'F 8 8 10\n' + b'\xff\0\0\xff' * 64 +
                         b'F 8 8 10\n' + b'\0\xff\0\xff' * 64)

    def test_shows_what_a_damaged_gif_contains(self):
        header = 13
        one = len(gif((1, 1, 1))) - header - 1
        # An image's code size follows its control block, descriptor and color table.
        code_size = 8 + 10 + 6
        three = gif((255, 0, 0), (0, 255, 0), (0, 0, 255))
        damaged = bytearray(three)
        damaged[header + code_size] = 99
        empty = bytearray(three)
        height = 8 + 7
        empty[header + one + height] = 0
        for name, contents, frames, loss in (
                ('first.gif', bytes(damaged), 2, '2 of 3 frames can be shown'),
                ('empty.gif', bytes(empty), 2, '2 of 3 frames can be shown'),
                ('cut.gif', three[:-20], 3, '1 frame only in part'),
                ('end.gif', three[:header + 2 * one], 2, 'cut short after 2 frames')):
            path = self.file(name, contents)
            target = os.path.join(self.folder, name + ' frames')
            for words in (('--raw', path), (path, target)):
                done = subprocess.run([LUMORA, 'frames', *words], capture_output=True)
                self.assertEqual(done.returncode, 0, done.stderr)
                self.assertIn(f'{name} is damaged: '.encode(), done.stderr)
                self.assertIn(loss.encode(), done.stderr)
                self.assertEqual(done.stderr.count(b'\n'), 1)
            pictures = [each for each in os.listdir(target) if each.endswith('.png')]
            self.assertEqual(len(pictures), frames)
        target = os.path.join(self.folder, 'frames of standard input')
        subprocess.run([LUMORA, 'frames', '-', target], input=three, capture_output=True, check=True)
        self.assertEqual(len(os.listdir(target)), 3 + 2)

    @unittest.skipIf(IS_SANITIZED, 'sanitizers need more memory')
    def test_distinguishes_lack_of_memory_from_damage(self):
        big = self.file('big.gif', gif((255, 0, 0), size=(5000, 5000)))
        limit = 60 << 20
        done = subprocess.run([LUMORA, 'frames', big, os.path.join(self.folder, 'frames')],
                              capture_output=True, text=True,
                              preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (limit, limit)))
        self.assertEqual((done.returncode, done.stderr.count('\n')), (1, 1), done.stderr)
        self.assertIn('memory', done.stderr)

    def test_trusts_nothing_in_its_own_directory(self):
        os.makedirs(self.root)
        precious = self.file('precious', b'mine')
        own = self.on_device('.host')
        for name in ('bus', 'bus.log', 'lock', 'import.lock'):
            os.makedirs(own, exist_ok=True)
            os.symlink(precious, os.path.join(own, name))
            self.lumora('run', '--display', 'headless', '--for', '0')
            self.assertIn(self.lumora('status').returncode, (1, 3))
            shutil.rmtree(own)
        os.symlink(self.folder, own)
        self.fails(1, 'status')
        os.remove(own)
        os.mkdir(own, 0o777)
        os.mkfifo(os.path.join(own, 'bus'))
        self.fails(3, 'status')
        self.assertEqual(stat.S_IMODE(os.stat(own).st_mode), 0o700)
        # An address that leads to another directory's files.
        os.remove(os.path.join(own, 'bus'))
        victim = os.path.join(self.folder, 'lumora-victim')
        os.mkdir(victim)
        for name in ('bus', 'bus.conf', 'letter'):
            self.file('lumora-victim/' + name, b'mine')
        self.file('device/.host/bus', f'unix:path={victim}/bus'.encode())
        self.ok('run', '--display', 'headless', '--for', '0')
        self.assertEqual(len(os.listdir(victim)), 3)
        with open(precious, 'rb') as file:
            self.assertEqual(file.read(), b'mine')


class RunInBackground(Device):
    def test_returns_when_the_wallpaper_is_set(self):
        run = ['run', '--display', 'headless', '--background']
        self.assertIn('running', self.ok(*run, self.gif))
        try:
            self.assertEqual(self.shared()['frames_in_cache'], 2)
            # It sleeps from frame to frame, and every question would wake it.
            before = self.shared()['frames_shown']
            time.sleep(3)
            self.assertGreater(self.shared()['frames_shown'], before + 15)
            self.ok('stop')
            three = self.file('three.gif', gif(*[(255, 0, 0)] * 3))
            self.assertIn('3 frames; `lumora run` shows it', self.ok('set', three))
            self.ok(*run)
            self.assertEqual(self.shared()['frames_in_cache'], 3)
            self.assertIn('already running', self.fails(1, *run))
            self.assertIn('not on a desktop', self.ok('outputs'))
            self.assertIn('only the wallpaper of a desktop', self.fails(1, 'pause'))
        finally:
            self.ok('stop')


class CommandWithHomeScreen(Device):
    def test_plays_pauses_and_removes_a_gif(self):
        self.start('--refresh', '64')
        self.assertIn('2 frames', self.ok('set', 'shared', self.gif))
        status = self.status()
        self.assertEqual((status['running'], status['screen'], status['orientation'],
                          status['idiom'], status['size'], status['scale'], status['mode'],
                          status['enabled']),
                         (True, 'home', 'portrait', 'phone', [390, 844], 1, 1, True))
        shared = status['locations']['shared']
        self.assertEqual((shared['set'], shared['attached'], shared['frame'], shared['playing'],
                          shared['why'], shared['frame_shown'], shared['frames_in_cache'],
                          shared['speed'], shared['alpha'], shared['blur'], shared['scaling']),
                         (True, True, [0, 0, 390, 748], True, 'shown', None, 2, 1, 1, 0, 'FIT'))
        # A delay of 0.1 s ends with the seventh of 64 refreshes a second.
        self.ok('advance', '0.109')
        self.assertIsNone(self.shared()['frame_shown'])
        self.ok('advance', '0.001')
        self.assertEqual(self.shared()['frame_shown'], 0)
        self.ok('app', 'open')
        self.assertEqual((self.shared()['playing'], self.shared()['why']), (False, 'app open'))
        self.ok('advance', '100')
        self.assertEqual(self.shared()['frames_shown'], 1)
        self.ok('app', 'close')
        self.ok('advance', '0.11')
        self.assertEqual(self.shared()['frame_shown'], 1)
        # The screen still shows the GIF before.
        one = self.file('one.gif', gif((0, 0, 255)))
        subprocess.run([LUMORA, 'set', 'one.gif', '--root', self.root], cwd=self.folder,
                       capture_output=True, check=True, timeout=60)
        shared = self.shared()
        self.assertEqual((shared['gif'], shared['frame_shown'], shared['frames_in_cache']),
                         (one, None, 1))
        self.ok('scaling', 'shared', 'FULLSCREEN')
        self.assertEqual(self.shared()['scaling'], 'FULLSCREEN')
        self.ok('screen', 'off')
        self.assertEqual(self.shared()['why'], 'display off')
        self.ok('disable')
        self.assertEqual(self.shared()['why'], 'disabled')
        self.ok('enable')
        self.ok('remove', 'shared')
        self.assertEqual((self.shared()['set'], self.shared()['attached'], self.shared()['why']),
                         (False, False, 'nothing set'))
        self.assertFalse(os.path.exists(self.on_device(LIBRARY + '/Wallpaper_both.gif')))

    def test_applies_speed_opacity_and_blur_at_once(self):
        self.start('--refresh', '64')
        self.ok('set', 'shared', self.gif)
        self.ok('speed', 'shared', '2')
        self.ok('alpha', 'shared', '0.25')
        self.assertIn('2 frames', self.ok('blur', 'shared', '3.9'))
        shared = self.shared()
        self.assertEqual((shared['speed'], shared['alpha']), (2, 0.25))
        self.assertAlmostEqual(shared['blur'], 3.9, 5)
        # At double speed a delay of 0.1 s ends with the fourth of 64 refreshes a second.
        self.ok('advance', '0.062')
        self.assertIsNone(self.shared()['frame_shown'])
        self.ok('advance', '0.001')
        self.assertEqual(self.shared()['frame_shown'], 0)

    def test_blurs_while_a_view_has_no_gif(self):
        self.start()
        self.ok('set', 'shared', self.gif)
        self.ok('mode', 'separate')
        self.ok('post', 'com.brightfen.lumora.updateWallpaper')
        self.ok('blur', 'lockscreen', '2', '--timeout', '20')

    def test_changes_the_mode_only_between_imports(self):
        self.start()
        with open(self.on_device('.host/import.lock'), 'w', encoding='utf-8') as importing:
            fcntl.flock(importing, fcntl.LOCK_EX)
            with subprocess.Popen([LUMORA, '--root', self.root, 'mode', 'separate']) as changing:
                # The dock has nothing to do with imports.
                self.ok('dock', 'off')
                with self.assertRaises(subprocess.TimeoutExpired):
                    changing.wait(0.5)
                self.assertIn('not set', self.fails(1, 'get', 'MODE_INDEX'))
                fcntl.flock(importing, fcntl.LOCK_UN)
                self.assertEqual(changing.wait(20), 0)
        self.assertEqual(self.ok('get', 'MODE_INDEX'), '0\n')

    def test_plays_every_scenario_to_its_end(self):
        for name in sorted(os.listdir(SCENARIOS)):
            self.start()
            self.ok('play', os.path.join(SCENARIOS, name))
            self.ok('stop')
            self.host.communicate(timeout=20)
            shutil.rmtree(self.root)
        self.host = None

    def test_stops_a_scenario_at_the_first_failure(self):
        self.start()
        failures = {
            'expect locations.shared.playing true': 'found false',
            'expect locations.shared.frame [0, 0]': 'found null',
            'expect screen "lock screen"': 'found "home"',
            'expect locations.moon true': 'no field moon; it has: shared, lockscreen, homescreen',
            'expect screen.moon true': 'no field moon\n',
            'expect screen': 'a path and a value',
            'set shared "no file.gif"': 'No such file',
            'put "unfinished': 'unterminated quote',
            'dance': "there is no command 'dance'",
            'expct screen on': "there is no command 'expct'",
            'play other.txt': 'cannot play',
            'wait until screen app --timeout 0.1': 'found "home" until the timeout',
            'wait until screen app --timeout never': 'must be a number',
            'expect views.SBDockView.hidden true': 'found false',
        }
        for line, reason in failures.items():
            script = self.file('script.txt', ('# first\n\n  expect mode 1  # as it is\n'
                                              'put A "b  c"\n%s\nput A later\n' % line).encode())
            error = self.fails(1, 'play', script)
            self.assertIn(f'{script}:5: {line}', error)
            self.assertIn(reason, error)
            self.assertEqual(self.ok('get', 'A'), 'b  c\n')

    def test_marks_and_counts_the_expectations_of_a_script(self):
        self.start(clock='real')
        script = ('expect screen home\nset shared picture.gif\n'
                  'wait until locations.shared.frame_shown 1\napp open\nexpect mode 2')
        done = subprocess.run([LUMORA, '--root', self.root, 'play', '-'], input=script, text=True,
                              capture_output=True, cwd=self.folder, timeout=60)
        self.assertEqual(done.stdout.splitlines(), [
            '   1 ok expect screen home', '   2    set shared picture.gif',
            'shared wallpaper set: 2 frames', '   3 ok wait until locations.shared.frame_shown 1',
            '   4    app open', '   5 no expect mode 2', '2 expectations held before line 5'])
        self.assertEqual(done.stderr, 'lumora: -:5: expect mode 2: found 1\n')
        self.assertEqual(done.returncode, 1)

    def test_sets_separate_wallpapers(self):
        self.start('--idiom', 'pad', '--scale', '2')
        done = subprocess.run([LUMORA, '--root', self.root, 'set', '-'], input=RED_GREEN,
                              capture_output=True, timeout=60)
        self.assertEqual((done.returncode, done.stdout), (0, b'shared wallpaper set: 2 frames\n'))
        three = self.file('three.gif', gif((1, 2, 3), (4, 5, 6), (7, 8, 9)))
        self.assertIn('no longer shown on the home screen', self.ok('set', 'lockscreen', three))
        self.ok('set', self.gif)
        self.ok('set', '--keep-other', 'LockScreen', three)
        locations = self.status()['locations']
        self.assertEqual([locations[name]['frames_in_cache'] for name in ('lockscreen', 'homescreen')],
                         [3, 2])
        self.ok('rotate', 'left')
        locations = self.status()['locations']
        self.assertEqual(locations['lockscreen']['frame'], [0, 0, 1180, 820])
        self.assertEqual(locations['homescreen']['frame'], [0, 0, 1180, 820 - 110])
        self.ok('dock', 'off')
        self.assertEqual(self.status()['locations']['homescreen']['frame'], [0, 0, 1180, 820])
        self.ok('dock', 'on')
        picture = os.path.join(self.folder, 'picture.png')
        self.ok('screenshot', picture)
        with open(picture, 'rb') as file:
            header = file.read(24)
        self.assertEqual(struct.unpack('>II', header[16:]), (2360, 1640))
        self.ok('mode', 'shared')
        locations = self.status()['locations']
        self.assertEqual([locations[name]['attached'] for name in ('lockscreen', 'homescreen')],
                         [False, False])
        self.fails(1, 'screenshot', os.path.join(self.folder, 'nowhere', 'picture.png'))

    def test_keeps_the_later_of_two_blurs(self):
        self.start(clock='real')
        colors = [(each * 9, 99, 255 - each * 9) for each in range(25)]
        self.ok('set', 'shared', self.file('colors.gif', gif(*colors, size=(300, 300))))
        frame = self.on_device(LIBRARY + '/Wallpaper_both/Wallpaper_both_24.png')
        sharp = self.pixels(frame)
        with subprocess.Popen([LUMORA, '--root', self.root, 'blur', 'shared', '30'],
                              stdout=subprocess.DEVNULL) as earlier:
            self.eventually(lambda: self.lumora('get', 'SHARED_GIF_BLUR').stdout == '30\n')
            self.ok('blur', 'shared', '0')
        self.assertEqual(earlier.returncode, 0)
        self.assertEqual(self.pixels(frame), sharp)

    def test_accepts_any_runtime_directory_name(self):
        for name in ('with space', 'a&<%,;:=\'"', 'ü\n'):
            folder = os.path.join(self.folder, name)
            os.mkdir(folder, 0o700)
            self.start(environment=dict(os.environ, XDG_RUNTIME_DIR=folder))
            self.ok('lock')
            self.ok('stop')
            self.host.communicate(timeout=20)

    def test_overwrites_only_regular_files_with_screenshots(self):
        self.start('--screen', '2200x2200')
        pipe = os.path.join(self.folder, 'pipe')
        os.mkfifo(pipe)
        self.assertIn('not a regular file', self.fails(1, 'screenshot', pipe))
        self.assertTrue(stat.S_ISFIFO(os.lstat(pipe).st_mode))
        real = self.file('real.png', b'')
        link = os.path.join(self.folder, 'link.png')
        os.symlink(real, link)
        self.ok('screenshot', link)
        self.assertTrue(os.path.islink(link))
        self.assertIn('is a PNG file', self.fails(1, 'screenshot', self.folder + '/screen.jpg'))
        printed = subprocess.run([LUMORA, '--root', self.root, 'screenshot', '-'], check=True,
                                 capture_output=True, cwd=self.folder).stdout
        with open(real, 'rb') as file:
            self.assertEqual(printed, file.read())
        # Larger than any message on the bus may be.
        self.assertGreater(os.path.getsize(real), 1 << 20)

    def test_serializes_concurrent_sets(self):
        self.start(clock='real')
        both = [subprocess.Popen([LUMORA, '--root', self.root, 'set', 'shared', self.gif],
                                 stdout=subprocess.DEVNULL) for _ in range(2)]
        self.assertEqual([each.wait(60) for each in both], [0, 0])
        self.assertTrue(os.path.exists(self.on_device(LIBRARY + '/Wallpaper_both.gif')))

    def test_keeps_every_frame_after_overlapping_sets(self):
        self.start(clock='real')
        self.ok('put', 'SHARED_GIF_BLUR', '10')
        colors = [(each * 5, 99, 255 - each * 5) for each in range(40)]
        # Large enough to exceed the shortest timeout, but not by much.
        side = 200 if IS_SANITIZED else 1000
        long = self.file('long.gif', gif(*colors, size=(side, side)))
        short = self.file('short.gif', gif(*colors[:30], size=(side, side)))
        for first in (['--no-wait'], ['--timeout', '0.05']):
            self.lumora('set', 'shared', short, *first)
            self.assertIn('40 frames', self.ok('set', 'shared', long))
            self.assertEqual(self.shared()['frames_in_cache'], 40)
        # On a slow machine nothing has been changed yet.
        self.assertRegex(self.fails(1, 'set', 'shared', short, '--timeout', '0.1'),
                         '; (the new GIF is in place|nothing was changed)')
        # This file exists while a GIF is imported.
        previous = self.on_device('.host/previous.gif')
        self.eventually(lambda: not os.path.exists(previous))
        with subprocess.Popen([LUMORA, '--root', self.root, 'set', 'shared', long],
                              stderr=subprocess.PIPE, text=True) as interrupted:
            self.eventually(lambda: os.path.exists(previous))
            interrupted.send_signal(signal.SIGINT)
            self.assertRegex(interrupted.stderr.read(), '^lumora: interrupted; .*\n$')
        self.assertEqual(interrupted.returncode, -signal.SIGINT)
        self.eventually(lambda: not os.path.exists(previous))
        self.assertEqual((self.shared()['playing'], self.shared()['frames_in_cache']), (True, 40))
        middle = bytearray(gif((255, 0, 0), (0, 255, 0), (0, 0, 255)))
        middle[13 + len(gif((1, 1, 1))) - 14 + 24] = 99
        done = self.lumora('set', 'shared', self.file('middle.gif', bytes(middle)))
        self.assertEqual((done.returncode, done.stdout), (0, 'shared wallpaper set: 2 frames\n'))
        self.assertIn('2 of 3 frames', done.stderr)

    def test_keeps_all_concurrently_stored_settings(self):
        self.start(clock='real')
        self.ok('set', 'shared', self.gif)
        writers = [subprocess.Popen(
            ['sh', '-c', 'for i in $(seq 30); do "$0" --root "$1" put "$2$i" x || exit 1; done', LUMORA,
             self.root, name]) for name in 'AB']
        for _ in range(10):
            self.ok('post', 'com.brightfen.lumora.updateWallpaper')
        self.assertEqual([each.wait(60) for each in writers], [0, 0])
        with open(self.on_device(PREFERENCES), 'rb') as file:
            kept = plistlib.load(file)
        self.assertEqual([name + str(number) for name in 'AB' for number in range(1, 31)
                          if name + str(number) not in kept], [])

    def test_times_out_if_the_bus_does_not_answer(self):
        self.start()
        bus = self.child('dbus-daemon')
        os.kill(bus, signal.SIGSTOP)
        try:
            begun = time.monotonic()
            self.assertIn('does not answer', self.fails(1, 'wait', '--timeout', '1'))
            self.assertIn('does not answer', self.fails(1, 'set', 'shared', self.gif, '--timeout', '1'))
            self.assertLess(time.monotonic() - begun, 20)
        finally:
            os.kill(bus, signal.SIGCONT)
        # Malformed signals are ignored, and impossible time spans are rejected.
        address = self.ok('bus').strip()
        with subprocess.Popen([LUMORA, '--root', self.root, 'watch'], stdout=subprocess.PIPE,
                              text=True) as watch:
            while not select.select([watch.stdout], [], [], 0.1)[0]:
                for argument in ('int32:1', 'string:heard'):
                    subprocess.run(['dbus-send', '--bus=' + address, '/x',
                                    'com.brightfen.lumora.DarwinNotifyCenter.Posted', argument],
                                   check=True)
            self.assertIn('heard', watch.stdout.readline())
            watch.terminate()
        for span in (2**63 - 1, -2**63):
            done = subprocess.run(
                ['dbus-send', '--bus=' + address, '--print-reply', '--dest=com.brightfen.lumora.SpringBoard',
                 '/com/brightfen/lumora/SpringBoard', 'com.brightfen.lumora.SpringBoard.Advance',
                 f'int64:{span}', f'int64:{2**62}'], capture_output=True, text=True)
            self.assertIn('no such span', done.stderr)
        self.ok('advance', '1')

    @unittest.skipUnless(os.geteuid() == 0, 'only root can act as another user')
    def test_does_not_connect_to_another_users_bus(self):
        nobody = 65534
        os.makedirs(self.on_device('.host'))
        folder = os.path.join(self.folder, 'bus')
        for owner, mode in ((nobody, 0o700), (0, 0o770), (0, 0o707)):
            os.mkdir(folder)
            path = os.path.join(folder, 'bus')
            with socket.socket(socket.AF_UNIX) as bus:
                bus.bind(path)
                bus.listen()
                bus.setblocking(False)
                os.chmod(folder, mode)
                os.chown(folder, owner, owner)
                self.file('device/.host/bus', f'unix:path={path}'.encode())
                self.fails(3, 'lock')
                self.assertRaises(BlockingIOError, bus.accept)
            shutil.rmtree(folder)

    def test_ends_if_its_device_is_moved(self):
        self.start()
        os.rename(self.folder, self.folder + ' moved')
        try:
            _, errors = self.host.communicate(timeout=20)
            self.assertIn('moved or deleted', errors)
        finally:
            os.rename(self.folder + ' moved', self.folder)

    def test_can_interrupt_a_long_advance(self):
        self.start()
        self.ok('set', 'shared', self.gif)
        self.assertIn('before the timeout', self.fails(1, 'advance', '1000000', '--timeout', '0.5'))
        self.ok('stop', '--timeout', '10')

    def test_protects_the_hosts_own_directory(self):
        self.start()
        self.ok('put', 'SAFARI_DIRECTORY', '/.host')
        self.ok('post', 'com.brightfen.lumora.wallpaperNeedsUpdating')
        self.assertTrue(self.status()['running'])

    def test_watches_and_posts_notifications(self):
        self.start()
        with subprocess.Popen([LUMORA, '--root', self.root, 'watch'], stdout=subprocess.PIPE,
                              text=True) as watch:
            # It prints nothing until a notification arrives.
            heard = False
            while not heard:
                self.ok('post', 'ready')
                heard, _, _ = select.select([watch.stdout], [], [], 0.2)
            self.ok('set', 'shared', self.gif)
            seen = []
            while not seen or not seen[-1].endswith('updateAnimating'):
                time_of_day, name = watch.stdout.readline().split()
                self.assertRegex(time_of_day, r'^\d\d:\d\d:\d\d\.\d{3}$')
                seen.append(name)
            watch.send_signal(signal.SIGINT)
            self.assertEqual(watch.wait(10), 0)
        self.assertEqual([name for name in seen if name != 'ready'], [
            'com.brightfen.lumora.wallpaperNeedsUpdating', 'kLWGIFViewFrameFoundNotification',
            'kLWGIFViewFrameFoundNotification', 'kLWGIFViewDidStartAnimatingNotification',
            'com.brightfen.lumora.updateAnimating'])
        self.assertTrue(self.ok('bus').startswith('unix:path='))

    def test_watches_only_the_names_that_are_wanted(self):
        self.start()
        with subprocess.Popen([LUMORA, '--root', self.root, 'watch', '--json', 'a.*', '[bc].end',
                               '--except', '*.not'], stdout=subprocess.PIPE, text=True) as watch:
            while not select.select([watch.stdout], [], [], 0.2)[0]:
                self.ok('post', 'a."ready"')
            for name in ('a.b', 'a.not', 'x.a.b', 'b.end'):
                self.ok('post', name)
            seen = []
            while not seen or seen[-1]['name'] != 'b.end':
                seen.append(json.loads(watch.stdout.readline()))
            watch.terminate()
        self.assertEqual([each['name'] for each in seen if each['name'] != 'a."ready"'],
                         ['a.b', 'b.end'])
        self.assertRegex(seen[0]['time'], r'^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$')

    def test_runs_a_gif_for_a_limited_time(self):
        self.start(self.gif, '--for', '8', '--locked')
        self.host.stdout.readline()
        self.eventually(lambda: self.shared()['frames_in_cache'] == 2)
        self.assertEqual(self.status()['screen'], 'locked')
        self.assertEqual(self.host.wait(20), 0)
        self.fails(3, 'status')

    def test_ends_at_once_if_run_for_zero_seconds(self):
        done = self.lumora('run', '--display', 'headless', '--for', '0')
        self.assertEqual((done.returncode, done.stderr), (0, ''))

    def test_ends_if_its_device_is_deleted(self):
        self.start()
        shutil.rmtree(self.root)
        _, errors = self.host.communicate(timeout=20)
        self.assertEqual(self.host.returncode, 1)
        self.assertIn('moved or deleted', errors)

    def test_allows_one_home_screen_per_device(self):
        self.start()
        self.assertIn('already', self.fails(1, 'run', '--display', 'headless'))
        self.ok('stop')
        self.assertEqual(self.host.wait(10), 0)

    def test_restarts_after_a_process_was_killed(self):
        for victim in ('springboard', 'dbus-daemon', 'lumora'):
            self.start()
            names = {name: self.child(name) for name in ('springboard', 'dbus-daemon')}
            names['lumora'] = self.host.pid
            os.kill(names[victim], signal.SIGKILL)
            _, errors = self.host.communicate(timeout=20)
            if victim != 'lumora':
                self.assertEqual(self.host.returncode, 1)
                self.assertEqual(len([line for line in errors.splitlines() if line]), 1, errors)
            self.host = None
            self.fails(3, 'status')
            # The processes that were started with it have ended, too.
            self.eventually(lambda: not any(os.path.exists(f'/proc/{pid}')
                                            for pid in names.values()))
        self.start()
        self.ok('set', 'shared', self.gif)

    def test_rebuilds_an_unfinished_cache(self):
        self.start()
        self.ok('set', 'shared', self.gif)
        cache = self.on_device(LIBRARY + '/Wallpaper_both')
        frames = sorted(name for name in os.listdir(cache) if name.endswith('.png'))
        durations, = (name for name in os.listdir(cache) if name.endswith('.plist'))
        with open(os.path.join(cache, frames[1]), 'rb') as file:
            whole = file.read()
        for name, size in (('nothing', None), (durations, None), (frames[1], None),
                           (frames[1], len(whole) - 4), (frames[0], 0), (durations, 40)):
            os.kill(self.child('springboard'), signal.SIGKILL)
            self.host.communicate(timeout=20)
            changed = os.path.join(cache, name)
            if size is not None:
                os.truncate(changed, size)
            elif name != 'nothing':
                os.remove(changed)
            self.start()
            self.eventually(lambda: self.shared()['frames_in_cache'] == 2)
            with open(os.path.join(cache, frames[1]), 'rb') as file:
                self.assertEqual(file.read(), whole)
            self.assertTrue(os.path.exists(os.path.join(cache, durations)))
            self.host.terminate()
            said, _ = self.host.communicate(timeout=20)
            self.assertEqual('are made again' in said, name != 'nothing', name)
            self.start()

    def test_reports_an_unwritable_device(self):
        if os.geteuid() == 0:
            self.skipTest('root can write everywhere')
        self.start()
        os.chmod(self.on_device(LIBRARY), 0o555)
        self.assertIn('could not import', self.fails(1, 'set', 'shared', self.gif))
        os.chmod(self.on_device('var/mobile/Library/Preferences'), 0o555)
        self.assertIn('cannot store', self.fails(1, 'put', 'A', 'B'))

    def test_reports_a_location_that_cannot_be_cleared(self):
        # Not even root can create a file below a regular file.
        self.start()
        shutil.rmtree(self.on_device(LIBRARY))
        self.file('device/' + LIBRARY, b'a file in the folder\'s place')
        self.assertIn('could not import', self.fails(1, 'set', 'shared', self.gif))
        self.assertEqual(self.status()['running'], True)

    def test_tolerates_damaged_settings(self):
        os.makedirs(os.path.dirname(self.on_device(PREFERENCES)))
        for damage in (os.urandom(5000), b'bplist00' + os.urandom(500), b'<plist><array>' * 20000,
                       plistlib.dumps(['no', 'dictionary']), b'\0' * 100):
            self.file('device/' + PREFERENCES, damage)
            self.assertEqual(json.loads(self.ok('settings', '--json'))['MODE_INDEX'], 1)
        self.start()
        self.ok('set', 'shared', self.gif)


if __name__ == '__main__':
    unittest.main(verbosity=2)
