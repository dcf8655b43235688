#!/usr/bin/env python3
"""Changes one token of the library at a time, builds, and asks the tests whether they notice.

    tools/mutate.py COUNT SEED [FOLDER]     (by ./dev mutate)

Works on a copy of the tree in build/mutate. A change that does not compile, or that the compiler warns
of, is drawn again. What the tests do not notice is printed with its place: a test is missing there, or
the line could be simpler.
"""
import pathlib
import random
import re
import subprocess
import sys

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


def run(*command):
    try:
        return subprocess.run(command, capture_output=True, timeout=600).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def main():
    count, seed, folder = int(sys.argv[1]), int(sys.argv[2]), (sys.argv[3:] or [''])[0]
    top = pathlib.Path(__file__).resolve().parent.parent
    tree = top / 'build/mutate'
    if not (tree / '.git').exists():
        subprocess.run(['git', 'clone', '-q', str(top), str(tree)], check=True)
    subprocess.run(['git', '-C', str(tree), 'fetch', '-q'], check=True)
    subprocess.run(['git', '-C', str(tree), 'reset', '-q', '--hard', 'origin/HEAD'], check=True)
    subprocess.run(['cmake', '--preset', 'dev', '-S', str(tree)], check=True, cwd=tree, stdout=subprocess.DEVNULL)
    build = ['cmake', '--build', str(tree / 'build/dev')]
    tests = ['ctest', '--test-dir', str(tree / 'build/dev'), '--stop-on-failure', '-j2', '--timeout', '120']
    if not (run(*build) and run(*tests)):
        sys.exit('the tests fail before any change')
    places = list(candidates(tree, folder))
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
        if run(*build):
            done += 1
            if run(*tests):
                survivors.append(f'{path.relative_to(tree)}:{number + 1}: {lines[number].strip()}')
                print('not noticed:', survivors[-1], f'    was: {line.strip()}', sep='\n', flush=True)
        path.write_text(before)
    print(f'{done} changes, {done - len(survivors)} noticed, {len(survivors)} not; seed {seed}')


main()
