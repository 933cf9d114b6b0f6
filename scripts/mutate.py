#!/usr/bin/env python3
"""Breaks the logic in one place at a time and names the breaks that no native test or sample sees.

    scripts/mutate.py [--seed N] [--count N] [--seconds N] [--only FOLDER-OR-FILE]

Run it in a clean checkout of its own (it edits files, and puts each back), after a release build of
velnor-tests and velnor-sim. A break that survives is a missing test, a line that nothing needs, or an
equivalent (the result is the same): judge each. The last line counts.
"""
import argparse, glob, os, random, re, subprocess, sys, time

arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
arguments.add_argument('--seed', type=int, default=1)
arguments.add_argument('--count', type=int, default=100)
arguments.add_argument('--seconds', type=float, default=1200)
arguments.add_argument('--only', default='')
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


def passes():
    def ok(command, limit):
        try:
            return subprocess.run(command, capture_output=True, timeout=limit).returncode == 0
        except subprocess.TimeoutExpired:
            return False
    return ok(['build/release/tests/velnor-tests', '--gtest_brief=1', '--gtest_fail_fast'], 90) and \
        all(ok(['build/release/demo/velnor-sim', '--play', s], 20) for s in glob.glob('samples/*.scn'))


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
if not passes():
    sys.exit('the tests fail before anything is broken')
start, caught, survived, unbuilt = time.time(), 0, 0, 0
for path, number, kind, old, new in chosen[:options.count]:
    if time.time() - start > options.seconds:
        break
    source = open(path, encoding='utf8').read()
    lines = source.split('\n')
    lines[number] = new
    try:
        open(path, 'w', encoding='utf8').write('\n'.join(lines))
        built = subprocess.run(['cmake', '--build', 'build/release', '--target', 'velnor-tests', 'velnor-sim'],
                               capture_output=True).returncode == 0
        if not built:
            unbuilt += 1
        elif passes():
            survived += 1
            print(f'survived {path}:{number + 1} ({kind}): {old.strip()}', flush=True)
        else:
            caught += 1
    finally:
        open(path, 'w', encoding='utf8').write(source)
print(f'{caught} caught, {survived} survived, {unbuilt} did not build, {time.time() - start:.0f} s')
