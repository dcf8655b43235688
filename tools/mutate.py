#!/usr/bin/env python3
"""Changes one token of the library at a time, builds, and asks the tests whether they notice.

    tools/mutate.py COUNT SEED [FOLDER]     (by ./dev mutate)

Works on a copy of the tree in build/mutate. A change that does not compile, or that the compiler warns
of, is drawn again. The tests of the room of the change are asked first, all others only when those say
nothing. What no test notices is printed with its place: a test is missing there, or the line could be
simpler.
"""
import pathlib
import random
import re
import subprocess
import sys

TOP = pathlib.Path(__file__).resolve().parent.parent
TREE = TOP / 'build/mutate'
SWAPS = {'<': '<=', '<=': '<', '>': '>=', '>=': '>', '==': '!=', '!=': '==', '&&': '||', '||': '&&',
         '+': '-', '-': '+', '*': '/', '/': '*', '+=': '-=', '-=': '+=', '*=': '/=', '++': '--',
         'true': 'false', 'false': 'true', '0': '1', '1': '2', 'return;': ';', 'break;': ';', '!': ''}
SPACED = r'(?<= )(?:<=|>=|==|!=|&&|\|\||\+=|-=|\*=|[<>+\-*/])(?= )'
TOKEN = re.compile(SPACED + r'|\+\+|\b(?:true|false)\b|(?<![\w.])[01](?![\w.])|\breturn;|\bbreak;|!(?=\w)')
SKIPPED = re.compile(r'^\s*(?://|#|template|static_assert|assert|using|namespace|friend)|"|\'')


def candidates(root, folder):
    """Places (file, line number, start, end) of tokens in code, comments and declarations left out."""
    for path in sorted((root / 'nqcommon' / folder).rglob('*')):
        if path.suffix not in ('.cpp', '.h', '.inc'):
            continue
        for number, line in enumerate(path.read_text().splitlines()):
            code = line.split('//')[0]
            if SKIPPED.search(code) or (path.suffix == '.h' and ';' not in code):
                continue
            for match in TOKEN.finditer(code):
                yield path, number, match.start(), match.end()


def run(*command, seconds=600):  # from the top of the copy, where the tests find their files
    try:
        return subprocess.run(command, capture_output=True, timeout=seconds, cwd=TREE).returncode == 0
    except subprocess.TimeoutExpired:
        return False


BUILD = ['cmake', '--build', TREE / 'build/dev']
TEST = ['ctest', '--test-dir', TREE / 'build/dev', '--stop-on-failure', '-j2', '--timeout', '120']


def noticed(path):
    """Does a test notice the change of the file? None when it does not compile."""
    programs = TREE / 'build/dev/tests'
    for folder in reversed(path.relative_to(TREE).parts[:-1]):
        if (programs / f'{folder}_tests').exists():
            if not run(*BUILD, '--target', f'{folder}_tests'):
                return None
            if not run(programs / f'{folder}_tests', '--gtest_fail_fast', seconds=120):
                return True
            break
    return not run(*TEST) if run(*BUILD) else None


def main():
    count, seed, folder = int(sys.argv[1]), int(sys.argv[2]), (sys.argv[3:] or [''])[0]
    if not (TREE / '.git').exists():
        subprocess.run(['git', 'clone', '-q', TOP, TREE], check=True)
    run('git', 'fetch', '-q')
    run('git', 'reset', '-q', '--hard', 'origin/HEAD')
    run('cmake', '--preset', 'dev', '-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1')
    if not (run(*BUILD, seconds=3600) and run(*TEST)):
        sys.exit('the tests fail before any change')
    places = list(candidates(TREE, folder))
    random.seed(seed)
    random.shuffle(places)
    done, survivors = 0, []
    for path, number, start, end in places:
        if done == count:
            break
        before = path.read_text()
        lines = before.splitlines(keepends=True)
        line = lines[number]
        lines[number] = line[:start] + SWAPS[line[start:end]] + line[end:]
        path.write_text(''.join(lines))
        answer = noticed(path)
        if answer is not None:
            done += 1
            if not answer:
                survivors.append(f'{path.relative_to(TREE)}:{number + 1}: {lines[number].strip()}')
                print(f'change {done} is not noticed:', survivors[-1], f'    was: {line.strip()}', sep='\n', flush=True)
        path.write_text(before)
    print(f'{done} changes, {done - len(survivors)} noticed, {len(survivors)} not; seed {seed}')


main()
