"""A root folder that has the files of some installed packages and of all that they depend on, and
nothing else: what a fresh machine has behind "apt-get install". It is made from the files of the
running system, so it needs no network."""

import os
import re
import shutil
import subprocess

DATABASE = "/var/lib/dpkg"
# Nothing runs these, and they are most of the files.
LEFT_OUT = re.compile(r"/usr/share/(doc|man|info|locale|lintian|icons)/.|/usr/lib/python3.*/test/|"
                      r".*/__pycache__/")


def installed_packages():
    """Name -> fields of each installed package, and what is provided -> names."""
    with open(DATABASE + "/status", encoding="utf-8") as file:
        paragraphs = file.read().split("\n\n")
    packages, provided = {}, {}
    for paragraph in paragraphs:
        fields = dict(re.findall(r"^([\w-]+): (.*(?:\n .*)*)", paragraph, re.M))
        if not fields.get("Status", "").endswith(" installed"):
            continue
        fields["paragraph"] = paragraph.strip("\n")
        packages[fields["Package"]] = fields
        for name in names_in(fields.get("Provides", "")):
            provided.setdefault(name[0], []).append(fields["Package"])
    return packages, provided


def names_in(relation):
    """"a (>= 1) | b, c:any" as [["a", "b"], ["c"]]."""
    return [[re.match(r"[^\s:(\[]+", name.strip()).group() for name in group.split("|")]
            for group in relation.split(",") if group.strip()]


def with_dependencies(wanted):
    """Names of the essential packages, the wanted ones, and all that they need."""
    packages, provided = installed_packages()
    waiting = [name for name, fields in packages.items() if fields.get("Essential") == "yes"]
    waiting += wanted
    taken = set()
    while waiting:
        name = waiting.pop()
        if name in taken:
            continue
        if name not in packages:
            raise SystemExit("not installed: %s; scripts/install-packages installs it" % name)
        taken.add(name)
        fields = packages[name]
        for field in ("Pre-Depends", "Depends"):
            for group in names_in(fields.get(field, "")):
                found = [n for n in group if n in packages]
                found += [p for n in group for p in provided.get(n, [])]
                waiting += found[:1]
    return sorted(taken), packages


def relations_of(archives, own):
    """What packages in files depend on beyond those named in `own`."""
    groups = []
    for archive in archives:
        groups += names_in(subprocess.check_output(["dpkg-deb", "-f", archive, "Depends"],
                                                   text=True))
    packages, provided = installed_packages()
    names = []
    for group in groups:
        if set(own).intersection(group):
            continue
        found = [n for n in group if n in packages]
        found += [p for n in group for p in provided.get(n, [])]
        if not found:
            raise SystemExit("depends on what is not installed: " + " | ".join(group))
        names.append(found[0])
    return names


def add_packages(root, wanted):
    """Puts packages and all that they need into `root`, files and entries of the database."""
    names, packages = with_dependencies(wanted)
    prepare(root)
    status = root + DATABASE + "/status"
    with open(status, encoding="utf-8") as file:
        there = set(re.findall(r"^Package: (.*)", file.read(), re.M))
    for name in names:
        if name in there:
            continue
        key = name
        if not os.path.exists("%s/info/%s.list" % (DATABASE, name)):
            key = "%s:%s" % (name, packages[name]["Architecture"])
        with open("%s/info/%s.list" % (DATABASE, key), encoding="utf-8") as file:
            copy_files(root, file.read().splitlines())
        for file in os.listdir(DATABASE + "/info"):
            if file.rpartition(".")[0] == key:
                shutil.copy2(DATABASE + "/info/" + file, root + DATABASE + "/info/" + file)
        with open(status, "a", encoding="utf-8") as file:
            file.write(packages[name]["paragraph"] + "\n\n")


def prepare(root):
    for folder in ("/info", "/updates", "/triggers", "/alternatives"):
        os.makedirs(root + DATABASE + folder, exist_ok=True)
    for folder in ("/tmp", "/proc", "/dev", "/usr"):
        os.makedirs(root + folder, exist_ok=True)
    for link in ("bin", "sbin", "lib", "lib32", "lib64", "libx32"):
        if os.path.islink("/" + link) and not os.path.lexists(root + "/" + link):
            os.symlink(os.readlink("/" + link), root + "/" + link)
            os.makedirs(os.path.join(root, os.readlink("/" + link)), exist_ok=True)
    open(root + DATABASE + "/status", "a").close()
    open(root + "/dev/null", "a").close()  # a device wants rights that a test may lack
    for file in ("arch", "triggers/ldconfig"):
        if os.path.exists(DATABASE + "/" + file):
            shutil.copy2(DATABASE + "/" + file, root + DATABASE + "/" + file)


def copy_files(root, paths):
    for path in paths:
        target = root + path
        if os.path.lexists(target) or LEFT_OUT.match(path) or not os.path.lexists(path):
            continue
        if os.path.islink(path):
            os.symlink(os.readlink(path), target)
        elif os.path.isdir(path):
            os.makedirs(target, exist_ok=True)
        else:
            shutil.copy2(path, target)
