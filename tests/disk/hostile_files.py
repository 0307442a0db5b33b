#!/usr/bin/env python3
"""hostile_files.py BUILD: files that nobody means well with, to every command that reads one. Each ends as an error with a
message or as the file that it is, after less than a second of the processor and in less than 100 MB. Never as root: everything
then runs as `nobody`, in a scratch folder."""
import os, pwd, resource, shutil, struct, subprocess, sys, tempfile

scratch = tempfile.mkdtemp(prefix="vantrel-hostile-")
shutil.copy(sys.argv[1] + "/vantrelctl", scratch + "/")
user = {}
if os.geteuid() == 0:
    nobody = pwd.getpwnam("nobody")
    user = dict(user=nobody.pw_uid, group=nobody.pw_gid, extra_groups=[])
os.chmod(scratch, 0o777)


def make(name, *parts):
    with open(f"{scratch}/{name}", "wb") as file:
        for part in parts:
            file.write(part)
    return name


def sparse(name):
    with open(f"{scratch}/{name}", "wb") as file:
        file.truncate(1 << 30)
    return name


def nothing(name, how):
    how(f"{scratch}/{name}")
    return name


header = struct.pack("<HIi", 1, 0xFFFFFFFF, 0)
FILES = [make("billions.sdt", header * 50), make("long.sdt", struct.pack("<H", 0xFFFF) + b"x" * 65535), make("empty.sdt"),
         sparse("gigabyte.sdt"), nothing("folder.sdt", os.mkdir), nothing("fifo.sdt", os.mkfifo), "/dev/zero", "/dev/tty",
         make("items.vtl", b"1," * 1000000), make("long.vtl", b'a,b,c,1,e,f,g,h,i\nN2,"D' + b"x" * 65535 + b'",1,2,3,4,5,6,WW\n'),
         make("quotes.vtl", b'"' * 1000000), sparse("gigabyte.vtl"), nothing("folder.vtl", os.mkdir), nothing("fifo.vtl", os.mkfifo),
         make("deep.json", b"[" * 1000000), make("items.json", b'{"values":[' + b"1," * 1000000 + b"1]}"), sparse("gigabyte.json"),
         make("items.csv", b"Node," * 1000000), make("lines.csv", b"Sequence\n" * 1000000), sparse("gigabyte.csv")]
COMMANDS = [["show"], ["check"], ["compare", "FILE", "FILE"], ["import", "FILE", "out.sdt", "--yes"], ["export", "FILE", "out.json", "--yes"]]


def limits():
    resource.setrlimit(resource.RLIMIT_CPU, (20, 20))


wrong, tried, most, longest = [], 0, 0, 0.0
for file in FILES:
    for command, *more in COMMANDS:
        words = [command] + ([file if word == "FILE" else word for word in more] or [file])
        child = subprocess.Popen([scratch + "/vantrelctl", *words], cwd=scratch, env=dict(HOME=scratch, LANG="C.UTF-8"),
                                 stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, preexec_fn=limits,
                                 **user)
        said = child.stderr.read()
        _, status, used = os.wait4(child.pid, 0)
        code, seconds, megabytes = os.waitstatus_to_exitcode(status), used.ru_utime + used.ru_stime, used.ru_maxrss / 1024
        tried, most, longest = tried + 1, max(most, megabytes), max(longest, seconds)
        if code not in (0, 1, 4) or (code and not said) or seconds > 1 or megabytes > 100 or len(said) > 4000:
            wrong.append(f"{' '.join(words)}: ended {code}, {seconds:.2f} s, {megabytes:.0f} MB, {said[:200]!r}")
shutil.rmtree(scratch)
print(f"{tried} tried: at most {longest:.2f} s of the processor and {most:.0f} MB", *wrong, sep="\n")
sys.exit(1 if wrong or tried < 50 else 0)
