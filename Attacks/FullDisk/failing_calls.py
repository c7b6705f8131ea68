"""tovcatalog, where one call to the system fails: each call of each kind in turn."""

from catalogue import CATALOGUE, Figure, Place, require, without_log

# What the calls of a kind report.
CALLS = {"read": "EIO", "pread64": "EIO", "write": "ENOSPC", "openat": "EMFILE", "getdents64": "EIO", "fsync": "EIO",
         "rename": "EIO", "newfstatat": "EIO", "statx": "EIO", "lseek": "EIO", "flock": "EIO"}


def run_with_fault(place, call, number, *arguments):
    """Returns the run, and whether it made so many calls of this kind."""
    log = place.folder / "calls.log"
    run = place.run(*arguments, before=["strace", "-f", "-qq", "-o", str(log), "-e", f"trace={call}", "-e",
                                        f"inject={call}:error={CALLS[call]}:when={number}"])
    happened = "(INJECTED)" in log.read_text(errors="replace")
    log.unlink()
    run.stderr = without_log(run.stderr)
    return run, happened


def check_create(place, run):
    if run.returncode == 1:
        # Some files could not be read: these are named, and all others are in the catalogue.
        require(b"unreadable" in run.stderr, f"what could not be read is named: {run.stderr}")
        listed = place.run("list", CATALOGUE)
        require(listed.returncode == 0 and listed.stdout, "what could be read is in the catalogue")
        place.restore()
    place.require_told(run)
    place.restore()
    place.require_clean_next_run()


def check_list(place, run, honest):
    require(run.stdout == honest if run.returncode == 0 else run.stderr.strip(),
            f"the whole list, or an error: status {run.returncode}")


def check_verify(place, run, honest):
    del honest
    if run.returncode == 0:
        require(b"all unchanged" in run.stdout, "success says that all is unchanged")
    elif run.returncode == 1:
        require(b"unreadable" in run.stdout, f"what could not be read is named: {run.stdout}")
    else:
        require(run.stderr.strip(), f"a failure is told: status {run.returncode}")


def attack_command(place, figure, check, *arguments):
    for call in CALLS:
        number, happened = 1, True

        def once(call, number, command):
            del command  # only told where it fails
            nonlocal happened
            run, happened = run_with_fault(place, call, number, *arguments)
            if happened:
                figure.note(f"with {call}")
            check(place, run)

        while happened and number < 1000:
            figure.attempt(once, call, number, arguments[0])
            number += 1


def attack(program):
    place = Place(program)
    figure = Figure("runs with a failed call to the system", "an error, or the right result; never silence")
    attack_command(place, figure, check_create, "create", CATALOGUE, place.tree)
    honest = place.run("list", CATALOGUE).stdout
    attack_command(place, figure, lambda *found: check_list(*found, honest), "list", CATALOGUE)
    (place.folder / CATALOGUE).write_bytes(place.new)
    attack_command(place, figure, lambda *found: check_verify(*found, honest), "verify", CATALOGUE)
    return figure.tell(sum(figure.notes.values()) > 100)
