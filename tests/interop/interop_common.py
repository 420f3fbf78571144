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
