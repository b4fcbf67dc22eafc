"""Changes the library in one small way at a time, and looks whether the tests notice.

usage: scripts/mutants [--list] [NAME...]

tests/mutation/mutants.txt lists the changes. All of them are compiled into one program at once, in a
copy of the sources in build/mutants, and an environment variable picks the one that runs; the few that
cannot stand there get programs of their own. A mutant is killed when a test fails, crashes or hangs.
With names, only these mutants run. `--list` prints all names.

The status is 0 when all mutants were killed but for those that the list says survive, 1 when it was
otherwise or something failed, and 2 for a call that is not understood.
"""

import concurrent.futures
import os
import re
import resource
import shutil
import signal
import subprocess
import sys
import time
from pathlib import Path

from mutant_list import ListError, read_list, with_mutants

ROOT = Path(__file__).resolve().parents[2]
HERE = ROOT / "tests/mutation"
WORK = ROOT / "build/mutants"
SOURCE = WORK / "source"
BUILD = WORK / "build"
BUILT = BUILD / "bin/KivFisheyeTests"

# A mutant of what limits sizes may ask for all the memory there is.
MOST_MEMORY = 6 << 30


class Failure(Exception):
    """What went wrong, in one sentence."""


def run(*command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if done.returncode != 0:
        sys.stderr.write(done.stdout[-4000:])
        raise Failure(f"{command[0]} failed")
    return done.stdout


def write_if_changed(path, content):
    if not path.exists() or path.read_bytes() != content:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)


def mutated_file(name, mutants):
    here = [mutant for mutant in mutants if mutant.file == name]
    content = (ROOT / name).read_bytes()
    return with_mutants(content.decode(), here).encode() if here else content


def copy_sources(mutants):
    """Makes the copy, with the mutants in it and the file that chooses among them."""
    listed = run("git", "-C", str(ROOT), "ls-files", "-z", "--cached", "--others", "--exclude-standard")
    names = sorted({name for name in listed.split("\0") if (ROOT / name).is_file()})
    for mutant in mutants:
        if mutant.file not in names:
            raise ListError(f"{mutant.name}: there is no file {mutant.file}")
    for name in names:
        write_if_changed(SOURCE / name, mutated_file(name, mutants))
        shutil.copymode(ROOT / name, SOURCE / name)
    switch = "tests/support/MutantSwitch.cpp"
    write_if_changed(SOURCE / switch, (HERE / "MutantSwitch.cpp").read_bytes())
    for path in SOURCE.rglob("*"):
        if path.is_file() and str(path.relative_to(SOURCE)) not in (*names, switch):
            path.unlink()


def build():
    run("cmake", "-S", str(SOURCE), "-B", str(BUILD), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
        "-DKIVFISHEYE_TOOLS=OFF", "-DKIVFISHEYE_TIMING=OFF", "-DKIVFISHEYE_WARNINGS_ARE_ERRORS=OFF",
        f"-DCMAKE_CXX_FLAGS=-w -include {SOURCE / 'tests/mutation/MutantSwitch.h'}")
    return build_program("common")


def build_program(name):
    """A program that stays as it is when others are built."""
    run("cmake", "--build", str(BUILD), "--target", BUILT.name)
    program = WORK / "programs" / name
    program.parent.mkdir(exist_ok=True)
    shutil.copy2(BUILT, program)
    return program


def build_alone(mutant, mutants):
    """A program with this mutant and the unchosen others."""
    others = [other for other in mutants if not other.whole_build]
    path = SOURCE / mutant.file
    write_if_changed(path, mutated_file(mutant.file, [*others, mutant]))
    try:
        return build_program(mutant.name)
    finally:
        write_if_changed(path, mutated_file(mutant.file, others))


def limit_resources():
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))


def run_tests(program, number, tests, seconds):
    """Who noticed, in a few words, or nothing when all tests passed."""
    environment = dict(os.environ, KIVFISHEYE_MUTANT=str(number))
    process = subprocess.Popen(
        [program, "--gtest_fail_fast", f"--gtest_filter={tests}"], env=environment, cwd=BUILD,
        stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, errors="replace",
        start_new_session=True, preexec_fn=limit_resources)
    try:
        output, _ = process.communicate(timeout=seconds)
        ending = "crashes" if process.returncode < 0 else "fails"
    except subprocess.TimeoutExpired:
        os.killpg(process.pid, signal.SIGKILL)
        output, _ = process.communicate()
        ending = "hangs"
    if process.returncode == 0:
        if not re.search(r"^\[  PASSED  \] [1-9]", output, re.MULTILINE):
            raise Failure(f"no test is called {tests}")
        return ""
    failed = re.search(r"^\[  FAILED  \] (\S+?),? ", output, re.MULTILINE)
    started = re.findall(r"^\[ RUN      \] (\S+)", output, re.MULTILINE)
    test = failed[1] if failed and ending == "fails" else started[-1] if started else "the program"
    return test if ending == "fails" else f"{test}, which {ending}"


def killer_of(mutant, program, seconds):
    number = 0 if mutant.whole_build else mutant.number
    for tests in ([mutant.tests] if mutant.tests else []) + ["*"]:
        killer = run_tests(program, number, tests, seconds)
        if killer:
            return killer
    return ""


def progress(text):
    if sys.stderr.isatty():
        sys.stderr.write(f"\r\033[K{text}")
        sys.stderr.flush()


def judge(mutants, common, programs, seconds):
    """Prints the table. Returns the mutants that did not end as the list says."""
    unexpected = []
    width = max(len(mutant.name) for mutant in mutants)
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as jobs:
        killers = jobs.map(
            lambda mutant: killer_of(mutant, programs.get(mutant.name, common), seconds), mutants)
        for done, (mutant, killer) in enumerate(zip(mutants, killers), 1):
            if bool(killer) == bool(mutant.survives):
                unexpected.append(mutant)
            verdict = killer or "SURVIVED"
            if mutant.survives:
                verdict += " (listed as surviving)"
            progress("")
            print(f"{mutant.name:{width}}  {verdict}", flush=True)
            progress(f"{done} of {len(mutants)}")
    progress("")
    return unexpected


def main(arguments):
    if "-h" in arguments or "--help" in arguments:
        print(__doc__.strip())
        return 0
    mutants = read_list((HERE / "mutants.txt").read_text())
    if arguments == ["--list"]:
        print("\n".join(mutant.name for mutant in mutants))
        return 0
    known = {mutant.name: mutant for mutant in mutants}
    for name in arguments:
        if name not in known:
            print(f"scripts/mutants: there is no mutant named '{name}'", file=sys.stderr)
            return 2
    chosen = [known[name] for name in dict.fromkeys(arguments)] or mutants
    progress("building")
    copy_sources([mutant for mutant in mutants if not mutant.whole_build])
    common = build()
    progress("running the tests without a mutant")
    begin = time.monotonic()
    killer = run_tests(common, 0, "*", None)
    if killer:
        raise Failure(f"a test fails without any mutant: {killer}")
    seconds = max(120.0, 5 * (time.monotonic() - begin))
    progress("building what needs programs of its own")
    programs = {m.name: build_alone(m, mutants) for m in chosen if m.whole_build}
    unexpected = judge(chosen, common, programs, seconds)
    listed = sum(bool(mutant.survives) for mutant in chosen)
    killed = len(chosen) - listed - sum(not mutant.survives for mutant in unexpected)
    print(f"{killed} of {len(chosen) - listed} mutants were killed, and {listed} are listed as surviving")
    if unexpected:
        print("Not as the list says:", " ".join(mutant.name for mutant in unexpected))
    return 1 if unexpected else 0


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except (Failure, ListError) as error:
        progress("")
        print(f"scripts/mutants: {error}", file=sys.stderr)
        sys.exit(1)
