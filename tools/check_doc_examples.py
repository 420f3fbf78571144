#!/usr/bin/python3
"""Runs the examples of the reference pages in docs/ and compares what they
print with what the pages show.

- AutoLISP and command pages (docs/lisp, docs/commands): every ```console
  block of the Example section is a shell session. Lines starting with "$ "
  are run with bash (a command may continue on here-document lines); the
  lines up to the next "$ " are its standard output.
- C++ pages (docs/cpp): the ```cpp block of the Example section is the body
  of a function. All of them are compiled into one sibling module, which the
  console loads; each example is run in a console of its own. The first
  ```text block is the command line (standard output), a second one, when
  there is one, standard error.

Every example starts from fresh family directories under /tmp/kel, set up as
docs/README.md describes (the directory is deleted and made again).

    tools/check_doc_examples.py [--build build/debug] [--scratch DIR] [PAGE ...]

PAGE is a page's name without .md (kel_findfile, KEL_GetPointEQ). The exit
status is 1 when an example does not print what its page shows (or the
console is killed by a signal while it runs), 2 when the build lacks the
console or the libraries a sibling module links, a PAGE does not exist, or
DIR is not one the examples may have to themselves.

--scratch DIR runs the examples in DIR instead of /tmp/kel, so that several
checks (or a check and the test suite) can run at once: "/tmp/kel" in the
commands and the C++ code (in any case, with either separator) is replaced
by DIR, and DIR in what they print by "/tmp/kel", before the comparison.
DIR is deleted and made again for every example, like /tmp/kel.

The C++ examples are compiled with the build's compiler and flags (read from
its CMakeCache.txt), else with c++.
"""
import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

SOURCE = pathlib.Path(__file__).resolve().parent.parent
DOCS = SOURCE / 'docs'
# Where the pages say the examples run.
PAGES_DIR = '/tmp/kel'
# Where they do run (--scratch).
EXAMPLES = pathlib.Path(PAGES_DIR)


def to_scratch(text):
    """A command or C++ example as run: the pages' directory replaced by the scratch directory. The family
    reads paths in any case and with either separator, so /TMP\\kel (written so in C++) is the same."""
    if str(EXAMPLES) == PAGES_DIR:
        return text
    return re.sub(r'/tmp(?:/|\\\\|\\)kel(?![\w-])', lambda m: str(EXAMPLES), text, flags=re.I)


def from_scratch(text):
    """What an example printed, with the scratch directory shown as the pages' directory."""
    return text if str(EXAMPLES) == PAGES_DIR else text.replace(str(EXAMPLES), PAGES_DIR)


def fresh_environment(console_dir):
    """The examples' environment, with fresh family directories."""
    shutil.rmtree(EXAMPLES, ignore_errors=True)
    for sub in ('install', 'local', 'work', 'common', 'home'):
        (EXAMPLES / sub).mkdir(parents=True)
    env = {k: v for k, v in os.environ.items() if not k.startswith('KEL') and k != 'ACAD'}
    env.update({
        'HOME': '%s/home' % EXAMPLES,
        'XDG_CONFIG_HOME': '%s/home/.config' % EXAMPLES,
        'XDG_DATA_HOME': '%s/home/.local/share' % EXAMPLES,
        'KEL_INSTALL_DIR': '%s/install/' % EXAMPLES,
        'KEL_LOCAL_DIR': '%s/local/' % EXAMPLES,
        'KEL_WORK_DIR': '%s/work/' % EXAMPLES,
        'KEL_COMMON_DIR': '%s/common/' % EXAMPLES,
        'KEL_REGISTRY_FILE': '%s/home/registry.ini' % EXAMPLES,
        'PATH': str(console_dir) + os.pathsep + os.environ.get('PATH', ''),
    })
    return env


def build_settings(build):
    """The C++ compiler and flags of the build (its CMake cache), so that the
    examples' module is built as the build's modules are (sanitizers included)."""
    cache = {}
    try:
        for line in (build / 'CMakeCache.txt').read_text().split('\n'):
            m = re.match(r'(CMAKE_CXX_COMPILER|CMAKE_CXX_FLAGS|CMAKE_MODULE_LINKER_FLAGS):[A-Z]+=(.*)$', line)
            if m:
                cache[m.group(1)] = m.group(2)
    except OSError:
        pass
    compiler = cache.get('CMAKE_CXX_COMPILER') or 'c++'
    return compiler, cache.get('CMAKE_CXX_FLAGS', '').split(), cache.get('CMAKE_MODULE_LINKER_FLAGS', '').split()


def example_section(text):
    m = re.search(r'^## Example\n(.*?)(?=^## |\Z)', text, re.S | re.M)
    return m.group(1) if m else None


def blocks(section):
    return re.findall(r'^```(\w*)\n(.*?)^```\n', section, re.S | re.M)


def parse_session(body):
    """[(command, [expected output lines])] of a console block."""
    session, current, heredoc = [], None, None
    for line in body.split('\n')[:-1]:
        if heredoc is not None:
            current[0] += '\n' + line
            if line == heredoc:
                heredoc = None
            continue
        if line.startswith('$ '):
            current = [line[2:], []]
            session.append(current)
            m = re.search(r"<<'(\w+)'", line)
            if m:
                heredoc = m.group(1)
        elif current is None:
            raise ValueError('output before the first command')
        else:
            current[1].append(line)
    return session


def crashed(run):
    """' (killed by signal N)' when the run ended on a signal, directly or as its shell reports it; else ''."""
    if run.returncode < 0:
        return ' (killed by signal %d)' % -run.returncode
    if run.returncode > 128:
        return ' (killed by signal %d)' % (run.returncode - 128)
    return ''


def check_session(page, body, console_dir):
    problems = []
    env = fresh_environment(console_dir)
    for command, want in parse_session(body):
        run = subprocess.run(['bash', '-c', to_scratch(command)], cwd=EXAMPLES, env=env, capture_output=True,
                             text=True)
        got = from_scratch(run.stdout).split('\n')
        if got and got[-1] == '':
            got.pop()
        if got != want or crashed(run):
            problems.append('%s: $ %s\n--- page\n%s\n--- printed%s\n%s\n--- standard error\n%s' %
                            (page, command, '\n'.join(want), crashed(run), '\n'.join(got), from_scratch(run.stderr)))
    return problems


def console_directory(build):
    return build / 'tools' / 'kelcad'


def sibling_libraries(build):
    """What a sibling module links: the module and the libraries it exports."""
    return [build / 'kelcad' / 'KELCAD.arx', build / 'kelbase' / 'libkelbase.so', build / 'host' / 'libkelhost.so']


def compile_cpp(examples, build, workdir):
    src = ['#include "kelcad/kelcad.h"', '#include <cmath>', '']
    for i, (name, code, _) in enumerate(examples):
        body = to_scratch('\n'.join(l for l in code.split('\n') if not l.startswith('#include')))
        src.append('static void Example%d() {  // %s\n%s\n}\n' % (i, name, body))
    src.append('static void Run(int which) {\n  switch (which) {')
    src += ['    case %d: Example%d(); break;' % (i, i) for i in range(len(examples))]
    src.append('''  }
}

extern "C" __attribute__((visibility("default"))) AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode msg, void* appId) {
  switch (msg) {
    case AcRx::kInitAppMsg:
      acrxDynamicLinker->unlockApplication(appId);
      acrxDynamicLinker->registerAppMDIAware(appId);
      break;
    case AcRx::kLoadDwgMsg: acedDefun(L"docexample", 1); break;
    case AcRx::kUnloadDwgMsg: acedUndef(L"docexample", 1); break;
    case AcRx::kInvkSubrMsg:
      if (acedGetFunCode() == 1) {
        const resbuf* args = acedGetArgs();
        if (args != nullptr && args->restype == RTSHORT) Run(args->resval.rint);
        acedRetVoid();
      }
      break;
    default: break;
  }
  return AcRx::kRetOK;
}

extern "C" __attribute__((visibility("default"))) int acrxGetApiVersion() { return ACRX_API_VERSION_MAJOR; }
''')
    source = workdir / 'docexamples.cpp'
    module = workdir / 'DOCEXAMPLES.arx'
    source.write_text('\n'.join(src))
    libs = sibling_libraries(build)
    rpath = ':'.join(str(l.parent) for l in libs)
    compiler, cxxflags, ldflags = build_settings(build)
    cmd = [compiler] + cxxflags + ['-std=c++17', '-shared', '-fPIC', '-Wall', '-Wextra', '-Werror', '-Wno-unused-parameter',
           '-I' + str(SOURCE), '-I' + str(SOURCE / 'kelbase' / 'include'), '-I' + str(SOURCE / 'host' / 'include'),
           str(source), '-o', str(module)] + ldflags + [str(l) for l in libs] + ['-Wl,-rpath,' + rpath]
    run = subprocess.run(cmd, capture_output=True, text=True)
    if run.returncode != 0:
        sys.exit('the C++ examples do not compile (%s):\n%s' % (source, run.stderr))
    return module


def check_cpp(examples, build, console_dir):
    problems = []
    with tempfile.TemporaryDirectory() as tmp:
        module = compile_cpp(examples, build, pathlib.Path(tmp))
        for i, (name, _, want) in enumerate(examples):
            env = fresh_environment(console_dir)
            run = subprocess.run(['kelcad', '--arx', str(module), '--eval', '(docexample %d)' % i], cwd=EXAMPLES,
                                 env=env, capture_output=True, text=True)
            streams = [from_scratch(run.stdout), from_scratch(run.stderr)]
            for k, text in enumerate(want):
                if streams[k].strip('\n') != text.strip('\n'):
                    problems.append('%s: %s\n--- page\n%s\n--- printed\n%s' %
                                    (name, ['standard output', 'standard error'][k], text, streams[k]))
            if len(want) == 1 and run.stderr.strip():
                problems.append('%s: unexpected standard error\n%s' % (name, streams[1]))
            if crashed(run):
                problems.append('%s: the console was%s\n--- printed\n%s' % (name, crashed(run), streams[0]))
    return problems


def main():
    parser = argparse.ArgumentParser(description=__doc__.split('\n')[0])
    parser.add_argument('--build', default=str(SOURCE / 'build' / 'debug'))
    parser.add_argument('--scratch', default=PAGES_DIR,
                        help='the directory the examples run in (deleted and made again for each), default /tmp/kel')
    parser.add_argument('pages', nargs='*')
    args = parser.parse_args()
    build = pathlib.Path(args.build).resolve()
    global EXAMPLES
    EXAMPLES = pathlib.Path(os.path.abspath(args.scratch))
    if EXAMPLES == pathlib.Path('/') or EXAMPLES == pathlib.Path.home() or EXAMPLES in SOURCE.parents \
            or EXAMPLES == SOURCE or EXAMPLES == build:
        print('--scratch %s: the directory is deleted for every example; give one of its own' % EXAMPLES)
        return 2
    console_dir = console_directory(build)
    missing = [str(f) for f in [console_dir / 'kelcad'] + sibling_libraries(build) if not f.is_file()]
    if missing:
        print('the build %s lacks %s: build the console (kelcad_console), the module and its libraries first'
              % (build, ', '.join(missing)))
        return 2
    wanted = set(args.pages)
    unknown = wanted - {path.stem for path in DOCS.glob('*/*.md')}
    if unknown:
        print('no such page: %s' % ', '.join(sorted(unknown)))
        return 2

    problems, checked, cpp = [], 0, []
    for path in sorted(DOCS.glob('*/*.md')):
        if path.name == 'README.md' or (wanted and path.stem not in wanted):
            continue
        section = example_section(path.read_text())
        page = str(path.relative_to(SOURCE))
        if section is None:
            problems.append(page + ': no example')
            continue
        found = blocks(section)
        checked += 1
        if path.parent.name == 'cpp':
            code = [b for kind, b in found if kind == 'cpp']
            outputs = [b for kind, b in found if kind == 'text']
            if len(code) != 1 or len(outputs) not in (1, 2):
                problems.append(page + ': the example needs one cpp block and one or two text blocks')
                continue
            cpp.append((page, code[0], outputs))
        else:
            sessions = [b for kind, b in found if kind == 'console']
            if not sessions:
                problems.append(page + ': no console block in the example')
            for body in sessions:
                problems += check_session(page, body, console_dir)
    if cpp:
        problems += check_cpp(cpp, build, console_dir)
    for problem in problems:
        print(problem, end='\n\n')
    print('%d pages checked, %d problems' % (checked, len(problems)))
    return 1 if problems else 0


if __name__ == '__main__':
    sys.exit(main())
