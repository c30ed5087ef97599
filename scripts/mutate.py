#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Changes one thing at a time in the sources and tells whether a test notices: a line a mutant, the rate at the end.

The mutants live in a clone of HEAD in build/mutants, never in this tree; what is not committed is not looked at.
The same seed takes the same sample of the same sources. Only a sample that nobody has seen before measures the tests.
"""
import argparse
import fcntl
import os
import pathlib
import random
import re
import signal
import subprocess
import sys
import time

TOP = pathlib.Path(__file__).resolve().parent.parent
CLONE = TOP / "build" / "mutants"
NO_PRODUCT = re.compile(r"(tests|bench|fuzz|docs|tools)/")

# Which tests a folder concerns, as ctest -R takes it. The first that fits counts.
TESTS = [
    ("module/trace/", "settings"),
    ("module/settings/", "settings|views"),
    ("module/", "views"),
    ("settings_format/", "settings|admin"),
    ("platform/layouts/", "platform_keyboard|admin"),
    ("platform/", "platform|end_to_end_token"),
    ("volume/luks/", "host|admin|token|power_loss"),
    ("volume/recovery/", "host|admin|power_loss"),
    ("volume/token/", "token|power_loss"),
    ("host/", "host|token|recovery|secrets_nothing|end_to_end"),
    ("admin/", "admin|token|power_loss"),
    ("", "settings|views|host|admin|token"),
]

# What is replaced, and by what. Comments, texts and preprocessor lines are left alone.
REPLACEMENTS = [
    (r" == ", [" != "]), (r" != ", [" == "]),
    (r" < ", [" <= ", " > "]), (r" > ", [" >= ", " < "]), (r" <= ", [" < "]), (r" >= ", [" > "]),
    (r" && ", [" || "]), (r" \|\| ", [" && "]),
    (r" \+ ", [" - "]), (r" - ", [" + "]), (r" \* ", [" / "]), (r" / ", [" * "]), (r" % ", [" * "]),
    (r" \+= ", [" -= "]), (r" -= ", [" += "]), (r" \|= ", [" &= "]), (r" &= ", [" |= "]),
    (r"\+\+", ["--"]), (r"--", ["++"]),
    (r"(?<=[ (!])!(?=[\w(])", [""]),
    (r"\btrue\b", ["false"]), (r"\bfalse\b", ["true"]),
]
CONSTANT = re.compile(r"(?<![\w.'])(\d[\d']*)(?=[uUlL]*(?![\w.'.]))")
CONDITION = re.compile(r"\b(if|while) (\()")
STATEMENT = re.compile(r"^\s+(?!return|delete|throw|using|static|const|case|break|continue|else|if|for|while|goto|"
                       r"Log\(|Trace|pba::Trace)"
                       r"[\w:.>\-\[\]()*]+(\(.*\)| [-+|&]?= .*);$")
HIDDEN = re.compile(r'R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|(?<!\w)\'(?:\\.|[^\'\\\n])+\'|//[^\n]*|/\*(?:.|\n)*?\*/'
                    r"|^[ \t]*#[^\n]*|\bstatic_assert\b[^;]*;", re.MULTILINE)


class Mutant:
    def __init__(self, path, text, begin, end, new):
        self.path, self.begin, self.end, self.new = path, begin, end, new
        self.line = text.count("\n", 0, begin) + 1
        self.old = text[begin:end]

    def __str__(self):
        became = f"became '{self.new.strip()}'" if self.new.strip() not in ("", "{}") else "is gone"
        return f"{self.path}:{self.line}: '{' '.join(self.old.split())}' {became}"

    def apply(self, text):
        return text[: self.begin] + self.new + text[self.end :]


def closing(text, opening):
    """The place behind the parenthesis that closes the one at `opening`."""
    depth = 0
    for place in range(opening, len(text)):
        depth += {"(": 1, ")": -1}.get(text[place], 0)
        if depth == 0:
            return place + 1
    return len(text)


def mutants_of(path, text):
    code = HIDDEN.sub(lambda match: re.sub(r"[^\n]", "\x00", match.group()), text)

    def mutant(begin, end, new):
        return Mutant(path, text, begin, end, new)

    for pattern, news in REPLACEMENTS:
        for match in re.finditer(pattern, code):
            yield from (mutant(*match.span(), new) for new in news)
    for match in CONSTANT.finditer(code):
        yield mutant(*match.span(1), str(int(match[1].replace("'", ""), 8 if re.match(r"0\d", match[1]) else 10) + 1))
    for match in CONDITION.finditer(code):
        end = closing(code, match.start(2)) - 1
        begin = max(match.end(2), code.rfind("; ", match.end(2), end) + 1)
        # No declaration, and nothing that another replacement turns.
        if not re.search(r"[^=!<>]=[^=]|^\s*![^&|]*$|^[^&|]* [!=]= [^&|]*$", code[begin:end]):
            yield mutant(begin, end, f"!({text[begin:end].strip()})")
    place = 0
    for line, seen in zip(text.splitlines(keepends=True), code.splitlines(keepends=True)):
        if STATEMENT.match(seen.rstrip()) and seen.count("(") == seen.count(")"):
            begin = place + len(line) - len(line.lstrip())
            yield mutant(begin, place + len(line.rstrip()), "{}")
        place += len(line)


def git(*arguments, where=TOP):
    return subprocess.run(["git", *arguments], cwd=where, check=True, capture_output=True, text=True).stdout


def lines_since(revision):
    """The changed lines of each file."""
    changed, path = {}, None
    for line in git("diff", "-U0", "--no-renames", revision, "HEAD").splitlines():
        if line.startswith("+++ "):
            path = line[6:]
        elif match := re.match(r"@@ .* \+(\d+)(?:,(\d+))? @@", line):
            first, count = int(match[1]), int(match[2] or 1)
            changed.setdefault(path, set()).update(range(first, first + count))
    return changed


def candidates(arguments):
    changed = lines_since(arguments.since) if arguments.since else None
    for path in git("ls-files", "--", *(arguments.files or ["."])).splitlines():
        if not re.search(r"\.(cpp|h)$", path) or NO_PRODUCT.match(path):
            continue
        if changed is not None and path not in changed:
            continue
        for mutant in mutants_of(path, git("show", f"HEAD:{path}")):
            if changed is None or mutant.line in changed[path]:
                yield mutant


def run(command, seconds=None):
    """The outcome and the output; None for the outcome when it takes too long. Nothing of it outlives this."""
    child = subprocess.Popen(command, cwd=CLONE, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                             errors="replace", start_new_session=True)
    try:
        output, _ = child.communicate(timeout=seconds)
        return child.returncode, output
    except subprocess.TimeoutExpired:
        return None, ""
    finally:
        if child.poll() is None:
            os.killpg(child.pid, signal.SIGKILL)
            child.wait()


def build():
    return run(["bash", "-c", "mkdir -p build && . scripts/common.sh && build gcc"])


def tests_of(path):
    return "^(" + next(tests for folder, tests in TESTS if path.startswith(folder)) + ")"


def test(regex, seconds=None):
    return run(["ctest", "--preset", "gcc", "-R", regex, "--stop-on-failure"], seconds)


def prepare():
    """The clone at this HEAD, built. A mutant that an earlier run left there goes."""
    head = git("rev-parse", "HEAD").strip()
    if not (CLONE / ".git").exists():
        git("clone", "-q", "--no-checkout", str(TOP), str(CLONE))
    git("fetch", "-q", "origin", where=CLONE)
    git("checkout", "-q", "--force", "--detach", head, where=CLONE)
    code, output = build()
    if code != 0:
        sys.exit(f"mutate.py: HEAD does not build:\n{output[-3000:]}")


class Judge:
    def __init__(self):
        self.seconds = {}  # that the tests may take: far more than unchanged

    def judge(self, mutant):
        regex = tests_of(mutant.path)
        if regex not in self.seconds:
            start = time.monotonic()
            code, output = test(regex)
            if code != 0:
                sys.exit(f"mutate.py: the tests {regex} fail without a mutant:\n{output[-3000:]}")
            self.seconds[regex] = 60 + 5 * (time.monotonic() - start)
        file = CLONE / mutant.path
        original = file.read_text()
        file.write_text(mutant.apply(original))
        try:
            if build()[0] != 0:
                return "does not compile"
            code, output = test(regex, self.seconds[regex])
        finally:
            file.write_text(original)
        if code is None:
            return "noticed: the tests do not end"
        if code == 0:
            return "NOT NOTICED"
        where = re.search(r"^(?:FAIL!  : |QFATAL : )(\S+?)\(", output, re.MULTILINE)
        names = re.findall(r"^\s+\d+ - (\S+) \(", output, re.MULTILINE)
        return f"noticed by {', '.join(names)}" + (f" ({where[1]})" if where else "")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=int(time.time()), help="default: another one each time")
    parser.add_argument("--count", type=int, default=10, help="how many mutants (10)")
    parser.add_argument("--files", nargs="+", metavar="PATH", help="files or folders; default: all of the product")
    parser.add_argument("--since", metavar="REV", help="only lines that changed since this commit")
    parser.add_argument("--list", action="store_true", help="name the sample and try nothing")
    arguments = parser.parse_args()

    everything = list(candidates(arguments))
    sample = random.Random(arguments.seed).sample(everything, min(arguments.count, len(everything)))
    print(f"seed {arguments.seed}: {len(sample)} of {len(everything)} mutants", flush=True)
    if arguments.list:
        print(*sample, sep="\n")
        return 0
    CLONE.parent.mkdir(exist_ok=True)
    with open(f"{CLONE}.lock", "w") as lock:
        try:
            fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            sys.exit("mutate.py: another run is at work")
        return try_all(sample)


def try_all(sample):
    for ending in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
        signal.signal(ending, signal.default_int_handler)
    judge, verdicts, code = Judge(), [], 0
    try:
        prepare()
        for mutant in sample:
            verdicts.append(judge.judge(mutant))
            print(f"{mutant}: {verdicts[-1]}", flush=True)
    except KeyboardInterrupt:
        code = 130
    noticed = sum(verdict.startswith("noticed") for verdict in verdicts)
    compiled = sum(verdict != "does not compile" for verdict in verdicts)
    rate = f" ({100 * noticed // compiled} %)" if compiled else ""
    print(f"{noticed} of {compiled} noticed{rate}, {len(verdicts) - compiled} do not compile")
    return code


if __name__ == "__main__":
    sys.exit(main())
