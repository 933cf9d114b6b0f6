#!/usr/bin/env python3
"""Breaks the logic in one place at a time and names the breaks that no native test or sample sees.

    scripts/mutate.py [--seed N] [--count N] [--seconds N] [--only FOLDER-OR-FILE] [--jobs N] [--all]

Run it after a quick build of velnor-tests and velnor-sim: a broken copy of one file is compiled
beside it, without optimization, and linked before the libraries that hold the sound one. A break
that survives is a missing test, a line that nothing needs, or an equivalent (the result is the
same): judge each. The last line counts.
"""
import argparse, concurrent.futures, glob, os, random, re, resource, shutil, subprocess, sys, tempfile, time

arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
arguments.add_argument('--seed', type=int, default=1)
arguments.add_argument('--count', type=int, default=100)
arguments.add_argument('--seconds', type=float, default=1200)
arguments.add_argument('--only', default='')
arguments.add_argument('--jobs', type=int, default=2)
arguments.add_argument('--all', action='store_true', help='names the breaks that were caught, too')
options = arguments.parse_args()
random.seed(options.seed)

FOLDERS = ('addin', 'client', 'items', 'explorer', 'inspector', 'ribbon', 'infra', 'state')
SWAPS = (('==', '!='), ('!=', '=='), (' && ', ' || '), (' || ', ' && '), (' < ', ' <= '), (' <= ', ' < '),
         (' > ', ' >= '), (' >= ', ' > '), ('true', 'false'), ('false', 'true'))


def breaks(path):
    for number, line in enumerate(open(path, encoding='utf8').read().split('\n')):
        text = line.strip()
        if not text or text.startswith(('//', '#', 'namespace', 'template')):
            continue
        for old, new in SWAPS:
            if old in line:
                yield number, f'{old.strip()} to {new.strip()}', line, line.replace(old, new, 1)
        if re.search(r'if \(!', line):
            yield number, 'negation dropped', line, re.sub(r'if \(!', 'if (', line, count=1)
        found = re.search(r'(?<![\w.])(\d+)(?![\w.])', line)
        if found and 'u"' not in line and "u'" not in line:
            yield number, 'constant + 1', line, line[:found.start()] + str(int(found.group(1)) + 1) + line[found.end():]
        if re.match(r'\s+(resume\(\[&\] \{ .* \}\);|[\w:.>()-]+\(.*\);|[\w.>-]+ = .*;)$', line) and \
                not re.match(r'\s*(return|const|auto|throw)', line):
            yield number, 'statement dropped', line, re.match(r'\s*', line).group(0) + ';'
        found = re.search(r'u"([^"]{3,})"', line)
        if found:
            yield number, 'text', line, line[:found.start(1)] + found.group(1)[:-1] + '~' + line[found.end(1):]


BUILD = os.path.abspath('build/quick')
TESTS, PLAYER = 'tests/velnor-tests', 'demo/velnor-sim'


def commands(target):
    listed = subprocess.run(['ninja', '-C', BUILD, '-t', 'commands', target], capture_output=True,
                            text=True, check=True).stdout.split('\n')
    return [line for line in listed if line and not line.startswith('ninja:')]


COMPILATIONS = {}
for line in commands(TESTS):
    found = re.search(rf' -c {re.escape(os.getcwd())}/(\S+\.cpp)$', line)
    if found:
        COMPILATIONS[found.group(1)] = line
LINKS = {target: commands(target)[-1] for target in (TESTS, PLAYER)}


def ok(command, limit, **more):
    """Whether the command succeeds within so many seconds of its own work, however busy the machine."""
    def bounded():
        resource.setrlimit(resource.RLIMIT_CPU, (limit, limit))
    try:
        return subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL, timeout=20 * limit, preexec_fn=bounded,
                              **more).returncode == 0
    except subprocess.TimeoutExpired:
        return False


# They take most of the time, and the others catch most of the breaks.
LAST = ':'.join(('LifecycleTest.AThousandLives*', 'HostTest.TakesAHundredThousandItems', 'CostTest.*',
                 'ExplorerTest.TenThousand*', 'SettingsTableTest.*', 'VCardReader.SurvivesDamage'))


def passes(tests, player):
    """`player` is made when it is needed."""
    if not all(ok([tests, '--gtest_brief=1', '--gtest_fail_fast', f'--gtest_filter={which}'], 90)
               for which in ('-' + LAST, LAST)):
        return False
    made = player()
    return all(ok([made, '--play', s], 20) for s in sorted(glob.glob('samples/*.scn')))


def link(target, broken, folder):
    """The program with the broken object, which hides the sound one in its library."""
    made = f'{folder}/{os.path.basename(target)}'
    line = LINKS[target].replace(f' -o {target} ', f' {broken} -fuse-ld=lld -o {made} ')
    if not ok(line, 120, cwd=BUILD, shell=True):
        raise RuntimeError(f'does not link: {line}')
    return made


def outcome(path, number, new):
    """'unbuilt', 'caught' or 'survived'."""
    folder = tempfile.mkdtemp()
    try:
        lines = open(path, encoding='utf8').read().split('\n')
        lines[number] = new
        source, broken = f'{folder}/{os.path.basename(path)}', f'{folder}/broken.o'
        open(source, 'w', encoding='utf8').write('\n'.join(lines))
        line = COMPILATIONS[path].removeprefix('ccache ').replace(' -O3 ', ' -O0 ')
        line = re.sub(r' -MD -MT \S+ -MF \S+ -o \S+ -c \S+$', f' -o {broken} -c {source}', line)
        if not ok(line, 120, cwd=BUILD, shell=True):
            return 'unbuilt'
        survives = passes(link(TESTS, broken, folder), lambda: link(PLAYER, broken, folder))
        return 'survived' if survives else 'caught'
    finally:
        shutil.rmtree(folder)


kinds = {}
for folder in FOLDERS:
    for path in glob.glob(folder + '/*.cpp'):
        if options.only and not path.startswith(options.only):
            continue
        for number, kind, old, new in breaks(path):
            kinds.setdefault(kind, []).append((path, number, kind, old, new))
for each in kinds.values():
    random.shuffle(each)
chosen = []
while len(chosen) < options.count and any(kinds.values()):
    chosen += [each.pop() for each in kinds.values() if each]
if not passes(f'{BUILD}/{TESTS}', lambda: f'{BUILD}/{PLAYER}'):
    sys.exit('the tests fail before anything is broken')
start, counts = time.time(), {'caught': 0, 'survived': 0, 'unbuilt': 0}


def judge(each):
    path, number, kind, old, new = each
    if time.time() - start > options.seconds:
        return
    result = outcome(path, number, new)
    counts[result] += 1
    if result == 'survived' or options.all:
        print(f'{result} {path}:{number + 1} ({kind}): {old.strip()}', flush=True)


with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
    list(pool.map(judge, chosen[:options.count]))
print(f'{counts["caught"]} caught, {counts["survived"]} survived, {counts["unbuilt"]} did not build, '
      f'{time.time() - start:.0f} s')
