#!/usr/bin/env python3
"""Makes Doxygen comments of a header's plain ones, on their way to Doxygen (INPUT_FILTER).

    // text                       /// text, with < and what else Doxygen would take for markup escaped
    //   text in columns          a code block: formulas and tables keep their layout
    // ---- Title (file) ----     a group of members, up to the next one or the end of the class
    // text on the first line     describes the file
    // text before a run of       describes each of them, up to the next blank line or comment, but for
    declarations                  copies, destructors and what overrides something of another name
    Name();  // text              describes what stands before it
"""
import re
import sys

RULER = re.compile(r'^( *)// ---- (.*?)(?: -*)?$')
COMMENT = re.compile(r'^( *)// ?(.*)$')
TRAILING = re.compile(r'^(.*[;,{}].*?)  // (.*)$')
DECLARATION = re.compile(r'^(?:  )?(?! |[})]|public|private|protected)\S')
ENDED = re.compile(r'[;}](?: *//.*)?$')
NAME = re.compile(r'(~?\w+)\(')
# Copies, moves and destructors are described at their class, and some declarations beside them.
OWN = re.compile(r'~|\boperator=\((?:const )?\w+&|\b(\w+)\((?:const )?\1(?:<\w+>)?&|  //')
INHERITED = re.compile(r'^  using INQ\w+::')  # overloads of an interface, which stand on its own page
LAID_OUT = re.compile(r'^ {2,}|\S {2,}\S')


def escaped(text):
    return re.sub(r'([<>@\\&#%"]|::|\.(?=\.))', r'\\\1', text)


def block(indent, texts):
    """The lines of one comment: runs of laid-out lines become code blocks, which are indented by four."""
    was_laid_out = False
    for text in texts:
        laid_out = bool(LAID_OUT.search(text)) and text.strip() != ''
        if laid_out != was_laid_out:
            yield f'{indent}///'
            was_laid_out = laid_out
        yield f'{indent}///     {text}' if laid_out else f'{indent}/// {escaped(text)}'


def shares(line, first):
    """Does the comment of a run, which stands before `first`, describe this declaration of the run too?"""
    names = [NAME.search(text) for text in (line, first)]
    if OWN.search(line) or not all(names):
        return False
    mine, theirs = (name[1] for name in names)
    return 'override' not in line or mine.startswith(theirs) or theirs.startswith(mine)


def translate(lines):
    in_group = False
    comment = []
    repeated = []  # the comment of the run of declarations that the last line belongs to
    first = ''     # the first of the run
    before = ''    # the last line

    # A comment with a blank line after it belongs to no declaration, but at the top it is the file's.
    def flush(detached=False):
        texts = [text for _, text in comment]
        if comment and detached:
            yield from (f'{indent}// {text}' for indent, text in comment)
        elif comment:
            yield from block(comment[0][0], texts)
        repeated[:] = [] if detached else comment
        comment.clear()

    if lines and lines[0].startswith('//'):
        yield '/// @file'
    for line in lines:
        ruler, match = RULER.match(line), COMMENT.match(line)
        if ruler or line.startswith(('};', '}  // namespace')):
            yield from flush()
            if in_group:
                yield '  /// @}'
            in_group = bool(ruler)
            yield f'  /// @name {escaped(ruler[2])}\n  /// @{{' if ruler else line
        elif match:
            comment.append((match[1], match[2]))
        elif INHERITED.match(line):
            comment.clear()
        else:
            if comment or line == '':
                yield from flush(detached=line == '')
                first = line
            elif repeated and DECLARATION.match(line) and ENDED.search(before) and shares(line, first):
                yield from block(repeated[0][0], [text for _, text in repeated])
            trailing = TRAILING.match(line)
            yield f'{trailing[1]}  ///< {escaped(trailing[2])}' if trailing else line
        before = line
    yield from flush()


print('\n'.join(translate(open(sys.argv[1], encoding='utf-8').read().split('\n'))))
