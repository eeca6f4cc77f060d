"""The changes that mutate.py makes: for each line of a C++ file, the lines that may stand in its place."""
import re

COMPARISONS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">"], "<=": ["<"], ">": [">=", "<"], ">=": [">"]}
WORDS = {"true": "false", "false": "true", "continue": "break", "front": "back", "back": "front", "begin": "end",
         "any_of": "all_of", "all_of": "any_of", "find": "rfind", "min": "max", "max": "min"}

TOKEN = re.compile(r'''
    (?P<text>(?:u8|R)?"(?:[^"\\]|\\.)*")
  | (?P<character>'(?:[^'\\]|\\.)+')
  | (?P<comment>//.*)
  | (?P<number>\b(?:0[xX][0-9A-Fa-f']+|[0-9][0-9']*(?:\.[0-9]+)?)(?P<suffix>[uUlLfFz]*)\b)
  | (?P<word>[A-Za-z_][A-Za-z0-9_]*)
  | (?P<operator>->|\+\+|--|<<=|>>=|<=>|==|!=|<=|>=|&&|\|\||\+=|-=|<<|>>|::|[-+*/%<>!=&|?:,;(){}\[\]~^.])
''', re.VERBOSE)
STATEMENT = re.compile(r'^\s+(?!return\b|using\b|static\b|const\b|constexpr\b|auto\b|case\b|default\b|break;|friend\b|extern\b'
                       r'|virtual\b|template\b|namespace\b|struct\b|class\b|enum\b|if\b|for\b|while\b|else\b|do\b|typedef\b|co_)'
                       r'[A-Za-z_(*+][^{}]*;\s*(//.*)?$')
ROW = re.compile(r'^\s+\{.*\},\s*(//.*)?$')


def balanced(line):
    code = re.sub(r'"(?:[^"\\]|\\.)*"|\'(?:[^\'\\]|\\.)+\'', '""', line)
    return all(code.count(a) == code.count(b) for a, b in ("()", "{}", "[]"))


def other_number(text, suffix):
    digits = text[:len(text) - len(suffix)] if suffix else text
    plain = digits.replace("'", "")
    if "." in plain:
        return [str(float(plain) + 1) + suffix]
    if plain[:2].lower() == "0x":
        value = int(plain, 16)
        return [hex(value + 1) + suffix, hex(value - 1) + suffix] if value else ["0x1" + suffix]
    value = int(plain)
    return [str(value + 1) + suffix] + ([str(value - 1) + suffix] if value > 0 else [])


def other_text(text):
    """The text less its last character, and with another one in the middle."""
    opening = text.index('"') + 1
    if text.startswith("R"):
        return []
    pieces = re.findall(r'\\x[0-9A-Fa-f]+|\\[0-7]{1,3}|\\.|[^\\]', text[opening:-1])
    if not pieces:
        return [text[:opening] + 'q"']
    middle = len(pieces) // 2
    other = "y" if pieces[middle] == "x" else "x"
    return ["".join([text[:opening], *pieces[:-1], '"']),
            "".join([text[:opening], *pieces[:middle], other, *pieces[middle + 1:], '"'])]


def arguments_swapped(line):
    """The line with two neighbouring arguments of a call exchanged, one for each pair."""
    simple = r'(?:"(?:[^"\\]|\\.)*"|[A-Za-z_0-9][\w.:>\-]*(?:\(\))?)'
    for match in re.finditer(rf'(?<=[(,{{] )?(?<=[(, {{])({simple}), ({simple})(?=[,)}}])', line):
        if match.group(1) != match.group(2):
            yield line[:match.start()] + match.group(2) + ", " + match.group(1) + line[match.end():]


def mutations_of_line(line, header):
    found = []

    def put(start, end, text):
        found.append(line[:start] + text + line[end:])
    for match in TOKEN.finditer(line):
        kind, text, start, end = match.lastgroup, match.group(), match.start(), match.end()
        if match.group("number"):
            for other in other_number(text, match.group("suffix")):
                put(start, end, other)
        elif kind == "text" and text.count(" ") < 2:  # a sentence is wording
            for other in other_text(text):
                put(start, end, other)
        elif kind == "character" and len(text) == 3:
            put(start, end, "'y'" if text == "'x'" else "'x'")
        elif kind == "word":
            if text in WORDS and line[max(0, start - 2):start] != "::":
                put(start, end, WORDS[text])
        elif kind == "operator":
            spaced = line[start - 1:start] == " " and line[end:end + 1] == " "
            if text in COMPARISONS and spaced:
                for other in COMPARISONS[text]:
                    put(start, end, other)
            elif text in ("&&", "||") and spaced:
                put(start, end, "||" if text == "&&" else "&&")
            elif text == "!":
                put(start, end, "")
            elif text in ("+", "-") and spaced and '"' not in line:
                put(start, end, "-" if text == "+" else "+")
            elif text in ("*", "/") and spaced and '"' not in line:
                put(start, end, "/" if text == "*" else "*")
            elif text in ("+=", "-=") and '"' not in line:
                put(start, end, "-=" if text == "+=" else "+=")
            elif text in ("++", "--"):
                put(start, end, "--" if text == "++" else "++")
            elif text in ("&", "|") and spaced and re.match(r'\s*(if|while|return|[a-z_.]+ =)', line):
                put(start, end, "|" if text == "&" else "&")
    condition = re.match(r'^(\s*(?:\} else )?if \()(.*)(\)(?: \{| return.*;| continue;| break;)?\s*)$', line)
    if condition and ";" not in condition.group(2) and balanced(condition.group(2)):
        for constant in ("true", "false"):
            found.append(condition.group(1) + f"({condition.group(2)}, {constant})" + condition.group(3))
    found.extend(arguments_swapped(line))
    # What stands at two blanks in a header is a declaration.
    if STATEMENT.match(line) and balanced(line) and ("(" in line or "=" in line) and not (header and line[:4].strip()):
        found.append(re.match(r'\s*', line).group() + ";")
    if ROW.match(line) and balanced(line):
        found.append("")
    return found


def mutations_of(lines, header):
    """By index of the line; lines of comments, includes and declarations have none."""
    found = {}
    inside_comment = inside_text = False
    for number, line in enumerate(lines):
        bare = line.strip()
        if 'R"(' in line or inside_text:
            inside_text = ')"' not in line[line.find('R"(') + 3 if 'R"(' in line else 0:]
            continue
        if bare.startswith("/*"):
            inside_comment = True
        if inside_comment:
            inside_comment = "*/" not in line
            continue
        if not bare or bare.startswith(("//", "#", "static_assert", "namespace", "using ", "template")) or bare.endswith(") = 0;"):
            continue
        changes = [row for row in mutations_of_line(line, header) if row != line]
        if changes:
            found[number] = sorted(set(changes))
    return found
