"""Running the console in private family directories, for the DXF
interoperability checks (run with Debian's /usr/bin/python3 and its ezdxf)."""
import os
import shutil
import subprocess
import sys


def private_env(workdir):
    shutil.rmtree(workdir, ignore_errors=True)
    env = dict(os.environ)
    for sub in ("install", "local", "work", "common", "home"):
        os.makedirs(os.path.join(workdir, sub))
    env.update({
        "HOME": os.path.join(workdir, "home"),
        "XDG_CONFIG_HOME": os.path.join(workdir, "home", ".config"),
        "KEL_INSTALL_DIR": os.path.join(workdir, "install") + "/",
        "KEL_LOCAL_DIR": os.path.join(workdir, "local") + "/",
        "KEL_WORK_DIR": os.path.join(workdir, "work") + "/",
        "KEL_COMMON_DIR": os.path.join(workdir, "common") + "/",
        "KEL_INIT_INI": os.path.join(workdir, "install", "KelInit.ini"),
        "KEL_SYS_INI": os.path.join(workdir, "install", "KelSys.ini"),
        "KEL_USER_INI": os.path.join(workdir, "local", "KelUser.ini"),
        "KEL_GC_INI": os.path.join(workdir, "work", "Project.ini"),
        "KEL_REGISTRY_FILE": os.path.join(workdir, "home", "registry.ini"),
    })
    return env


def run_console(console, workdir, args):
    env = private_env(workdir)
    proc = subprocess.run([console] + args, cwd=workdir, env=env, capture_output=True, text=True)
    return proc


def check(condition, message, failures):
    if not condition:
        failures.append(message)


def finish(failures):
    for f in failures:
        print("FAIL:", f)
    sys.exit(1 if failures else 0)


def dxf_items(path):
    """The items of a DXF file: (type, [(code, value), ...]) for each 0 group."""
    with open(path, encoding="utf-8") as f:
        lines = f.read().split("\n")
    items = []
    for i in range(0, len(lines) - 1, 2):
        code, value = int(lines[i]), lines[i + 1]
        if code == 0:
            items.append((value, []))
        elif items:
            items[-1][1].append((code, value))
    return items


def follower_problems(path):
    """What is wrong with the complex entities as the file holds them: each
    VERTEX or ATTRIB and the closing SEQEND name their POLYLINE or INSERT as
    owner (330), and a POLYLINE is closed by a SEQEND. Meshes (70 with 16 or
    64), which the host keeps as it read them, are not asked for owners."""
    problems, head, mesh = [], None, False
    for kind, tags in dxf_items(path):
        handle = next((v for c, v in tags if c == 5), None)
        owner = next((v for c, v in tags if c == 330), None)
        if kind in ("VERTEX", "ATTRIB", "SEQEND"):
            if head is None:
                problems.append("%s #%s follows no POLYLINE or INSERT" % (kind, handle))
            elif owner != head[1] and not mesh:
                problems.append("%s #%s: owner %s, not its %s #%s" % (kind, handle, owner, head[0], head[1]))
            if kind == "SEQEND":
                head = None
            continue
        if head is not None and head[0] == "POLYLINE":
            problems.append("POLYLINE #%s without SEQEND" % head[1])
        follows = kind == "POLYLINE" or (kind == "INSERT" and ("66", "1") in [(str(c), v.strip()) for c, v in tags])
        head = (kind, handle) if follows else None
        mesh = kind == "POLYLINE" and int(next((v for c, v in tags if c == 70), "0")) & (16 | 64) != 0
    return problems
