"""Makes the Debian packages of a build, installs them where there is nothing but what they depend
on, and uses them there: the command, Python, and a C and a C++ program built against the
development files. lintian judges the packages.

Arguments: the build folder, the version, a folder to work in."""

import os
import re
import shutil
import subprocess
import sys
import time

import root as clean

build, version, work = sys.argv[1:]
build, work = os.path.abspath(build), os.path.abspath(work)
HERE = os.path.dirname(os.path.abspath(__file__))
SOURCES = os.path.join(HERE, "..", "..")
RUNTIME = ["liblemara1", "lemara-data", "lemara", "python3-lemara"]
DEVELOPMENT = ["liblemara-dev"]

if os.geteuid() != 0:  # root of a namespace of our own is enough
    os.execvp("unshare", ["unshare", "--map-root-user", sys.executable, *sys.argv])

failures = []
started = time.monotonic()


def step(text):
    print("%5.1f s  %s" % (time.monotonic() - started, text), flush=True)


def expect(what, wanted, got):
    if wanted != got:
        failures.append(what)
        print("%s: expected %r, got %r" % (what, wanted, got))


def inside(root, *command, status=0, text=None):
    """Runs a command in the root; its standard output."""
    environment = {"PATH": "/usr/bin:/usr/sbin:/bin:/sbin", "HOME": "/tmp", "LC_ALL": "C.UTF-8"}
    run = subprocess.run(["chroot", root, *command], stdout=subprocess.PIPE, input=text,
                         stderr=subprocess.STDOUT, env=environment, text=True)
    if run.returncode != status:
        failures.append(" ".join(command))
        print("%s: status %d\n%s" % (" ".join(command), run.returncode, run.stdout))
    return run.stdout


def install(root, names, archives):
    clean.add_packages(root, clean.relations_of([archives[name] for name in names], archives))
    subprocess.run(["dpkg", "--root=" + root, "--log=/dev/null", "--force-unsafe-io", "-i"]
                   + [archives[name] for name in names],
                   check=True, stdout=subprocess.DEVNULL,
                   env=dict(os.environ, DEBIAN_FRONTEND="noninteractive"))


def write(root, name, text):
    with open(root + name, "w", encoding="utf-8") as file:
        file.write(text)


shutil.rmtree(work, ignore_errors=True)
packages_folder = os.path.join(work, "packages")
os.makedirs(packages_folder)
with open(os.path.join(work, "cpack.log"), "w", encoding="utf-8") as log:
    if subprocess.call(["cpack", "-G", "DEB", "-B", packages_folder], cwd=build, stdout=log,
                       stderr=subprocess.STDOUT) != 0:
        sys.exit(open(log.name, encoding="utf-8").read())
archives = {file.split("_")[0]: os.path.join(packages_folder, file)
            for file in os.listdir(packages_folder) if file.endswith(".deb")}
expect("packages", sorted(RUNTIME + DEVELOPMENT), sorted(archives))
step("packages are made")
lintian = subprocess.Popen(["lintian", "--allow-root", "--fail-on", "error", *archives.values()],
                           stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

# An installed tree answers from its own tables, wherever it is put.
moved = os.path.join(work, "moved")
subprocess.run(["cmake", "--install", build, "--prefix", "/opt/lemara"], check=True,
               stdout=subprocess.DEVNULL, env=dict(os.environ, DESTDIR=moved))
environment = {k: v for k, v in os.environ.items() if k != "LEMARA_TABLES"}
doctor = subprocess.run([moved + "/opt/lemara/bin/lemara", "doctor"], env=environment, text=True,
                        stdout=subprocess.PIPE).stdout
expect("tables of a moved tree", True, moved + "/opt/lemara/share/lemara/sareak.cfg" in doctor)
step("a moved tree answers")

root = os.path.join(work, "root")
os.makedirs(root)
install(root, RUNTIME, archives)
step("installed: the command and the Python package")
expect("version", "lemara " + version + "\n", inside(root, "lemara", "--version"))
expect("a sentence with an error", [":1:6:", "Liburo", "Liburu"],
       re.findall(r":1:6:|Libur[ou]",
                  inside(root, "lemara", "check", "--no-dictionary", "-", status=1,
                         text="Bai, Liburo on bat erosi dut.\n").splitlines()[0]))
expect("a right sentence", "",
       inside(root, "lemara", "check", "--no-dictionary", "-", text="Etxea handia da.\n"))
expect("Python", "[('etxxe', True)] /usr/share/lemara\n",
       inside(root, "python3", "-c", "import lemara, os; c = lemara.Checker(use_dictionary=False); "
              "print([(f.token, 'etxe' in f.forms) for f in c.check('etxea etxxe')], "
              "os.path.dirname(c.tables[0]))"))
clean.add_packages(root, ["man-db", "zsh", "fish"])
expect("a manual page", "/usr/share/man/man1/lemara-check.1.gz\n",
       inside(root, "man", "-w", "lemara-check"))
expect("zsh completes", "_lemara\n",
       inside(root, "zsh", "-c", "autoload -U compinit; compinit -u -D; print $_comps[lemara]"))
expect("fish completes", ["check"],
       re.findall(r"^check\b", inside(root, "fish", "-c", "complete -C 'lemara ch'"), re.M))
expect("bash completes", "complete -F _lemara lemara\n",
       inside(root, "bash", "-c", ". /usr/share/bash-completion/completions/lemara; "
              "complete -p lemara"))
step("manual and completions are found")
expect("headers without the development package", False,
       os.path.exists(root + "/usr/include/lemara-1"))

install(root, DEVELOPMENT, archives)
clean.add_packages(root, ["g++", "gcc", "cmake", "make", "pkg-config"])
step("installed: the development files, and compilers beside them")
write(root, "/tmp/program.c", r"""
#include <lemara/lemara.h>
#include <stdio.h>
int main(void) {
    lemara_checker* checker = NULL;
    int right = 0, wrong = 1;
    if (lemara_open(NULL, &checker, NULL) != LEMARA_OK) return 2;
    lemara_valid(checker, "etxeak", 6, &right, NULL);
    lemara_valid(checker, "etxxeak", 7, &wrong, NULL);
    printf("%s %d %d\n", lemara_version(), right, wrong);
    lemara_close(checker);
    return 0;
}
""")
inside(root, "sh", "-c", "gcc -std=c99 -Wall -Werror /tmp/program.c -o /tmp/program "
                         "$(pkg-config --cflags --libs lemara)")
expect("a C program", version + " 1 0\n", inside(root, "/tmp/program"))
shutil.copytree(os.path.join(SOURCES, "examples"), root + "/tmp/examples")
inside(root, "cmake", "-S", "/tmp/examples", "-B", "/tmp/examples/build",
       "-DCMAKE_CXX_COMPILER=g++")
inside(root, "cmake", "--build", "/tmp/examples/build")
expect("a C++ program of CMake", "etxea\tvalid\t",
       inside(root, "sh", "-c", "cd /usr/share/lemara && "
              "/tmp/examples/build/check sareak.cfg etxea | grep -o 'etxea.valid.'").strip("\n"))
step("programs are built and run")

inside(root, "dpkg", "--purge", *(DEVELOPMENT + RUNTIME))
expect("what stays behind a purge", [],
       [path for path in ("/usr/share/lemara", "/usr/bin/lemara", "/usr/include/lemara-1",
                          "/usr/lib/python3/dist-packages/lemara")
        if os.path.exists(root + path)])
report = lintian.communicate()[0]
print(report, end="")
if lintian.returncode != 0 or "no-manual-page" in report:
    failures.append("lintian")
step("lintian has judged")
shutil.rmtree(root)
shutil.rmtree(moved)
sys.exit("failed: " + ", ".join(failures) if failures else 0)
