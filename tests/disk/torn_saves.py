#!/usr/bin/env python3
"""torn_saves.py BUILD: every call that a save, a backup and the settings make to the file system fails once, with each of
these errors, and kills the program once. The file is then the old one or the new one, whole; a failure that mattered has its
message and exit code; nothing is left behind, after a kill once the next save is through. Never as root: everything then
runs as `nobody`, in a scratch folder."""
import collections, errno, os, pwd, re, shutil, subprocess, sys, tempfile

build = sys.argv[1]
scratch = tempfile.mkdtemp(prefix="vantrel-torn-")
programs, work, told = scratch + "/programs", scratch + "/work", scratch + "/told"
for folder in (programs, work, programs + "/Support"):
    os.mkdir(folder)
for name in ("vantrelctl", "tests/saver", "tests/libbreaker.so"):
    shutil.copy(f"{build}/{name}", programs + "/")
user = {}
if os.geteuid() == 0:
    nobody = pwd.getpwnam("nobody")
    user = dict(user=nobody.pw_uid, group=nobody.pw_gid, extra_groups=[])
    for folder, _, names in os.walk(scratch):
        for name in [folder] + [f"{folder}/{name}" for name in names]:
            os.chown(name, nobody.pw_uid, nobody.pw_gid)
plain = dict(PATH=os.environ["PATH"], HOME=scratch, TMPDIR=scratch, LANG="C.UTF-8")


def run(command, **more):
    return subprocess.run([f"{programs}/{command[0]}", *command[1:]], cwd=work, env=plain | more, capture_output=True, text=True,
                          timeout=60, **user)


def content(name):
    path = f"{work}/{name}"
    return open(path, "rb").read() if os.path.exists(path) else None


def start(before):
    shutil.rmtree(work)
    os.mkdir(work)
    if user:
        os.chown(work, user["user"], user["group"])
    for command in before:
        done = run(command)
        assert done.returncode == 0, done.stderr


TRIALS = {  # What makes the old file, what is tried, and the file that it is about (None: the one that it makes).
    "save": ([["vantrelctl", "new", "plant.sdt"]], ["vantrelctl", "set", "plant.sdt", "3", "NodeNumber", "7"], "plant.sdt"),
    "backup": ([], ["saver", "backup"], None),
    "settings": ([], ["saver", "settings"], "RSPort.cfg"),
}
counts, wrong = collections.Counter(), []
for name, (before, command, file) in TRIALS.items():
    start(before)
    old = content(file) if file else None
    done = run(command)
    assert done.returncode == 0, done
    file = file or os.listdir(work)[0]
    assert content(file) != old
    size = len(content(file))
    for error in ("kill", errno.ENOSPC, errno.EIO, errno.EACCES):
        for at in range(1, 10000):
            start(before)
            old = content(file)
            if os.path.exists(told):
                os.remove(told)
            done = run(command, LD_PRELOAD=programs + "/libbreaker.so", BREAK_AT=str(at), BREAK_ERROR=str(error), BREAK_TOLD=told)
            if not os.path.exists(told):
                break
            call, now = open(told).read(), content(file)
            new = now is not None and now != old and len(now) == size  # A date in it differs from run to run.
            said = f"{name}, {call} ({at}) {error}: ended {done.returncode}, \"{done.stderr.strip()}\""
            counts[name] += 1
            if not new and now != old:
                wrong.append(f"{said}: torn")
            if error == "kill":
                if run(command).returncode != 0:
                    wrong.append(f"{said}: cannot be saved any more")
            elif done.returncode not in (0, 4) or (done.returncode == 0) != new or (done.returncode == 4 and not done.stderr):
                wrong.append(f"{said}: {'new' if new else 'old'} file")
            left = {other for other in os.listdir(work) if other != file and not re.search(r"plant \d\.sdt$", other)}
            if left and call != "unlink":
                wrong.append(f"{said}: left {left}")
shutil.rmtree(scratch)
print(*(f"{name}: {count} broken calls" for name, count in counts.items()), *wrong, sep="\n")
sys.exit(1 if wrong or len(counts) < len(TRIALS) or min(counts.values()) < 20 else 0)
