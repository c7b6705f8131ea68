"""tovcatalog without room for what it writes."""

import resource
import signal
import subprocess
import tempfile
from pathlib import Path

from catalogue import CATALOGUE, Figure, Place, require

KIBIBYTE = 1024
PAGE = 4 * KIBIBYTE


def mount_small(folder, kibibytes=64, files=64):
    """The caller runs in a mount namespace of its own, so that nothing stays mounted."""
    subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={kibibytes}k,nr_inodes={files}", "tmpfs", str(folder)],
                   check=True)


def require_failure(place, run):
    require(run.returncode == 2, f"the exit status is 2, not {run.returncode}")
    require(len(run.stderr.splitlines()) == 1, f"one line tells it: {run.stderr}")
    require(place.catalogue() == place.old, "the earlier catalogue is whole")
    require(not place.names() or place.names() == ["filler"], f"nothing is left over: {place.names()}")


def fill(place, free):
    """Leaves so many bytes of the small disk, and no more."""
    filler = place.folder / "filler"
    filler.unlink(missing_ok=True)
    with open(filler, "wb", buffering=0) as file:
        try:
            while file.write(bytes(PAGE)) == PAGE:
                pass
        except OSError:
            pass
        file.truncate(max(file.tell() - free, 0))


def on_small_disk(place, free, figure):
    fill(place, free)
    try:
        run = place.run("create", CATALOGUE, place.tree)
        if run.returncode == 0:
            figure.note("with room enough")
            place.require_told(run)
        else:
            require_failure(place, run)
    finally:
        (place.folder / "filler").unlink()
        place.restore()
    place.require_clean_next_run()


def with_size_limit(place, limit):
    def prepare():
        signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
        resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))

    run = place.run("create", CATALOGUE, place.tree, preexec_fn=prepare, restore_signals=False)
    if limit >= len(place.new):
        place.require_told(run)
        require(run.returncode == 0, "a limit beyond the catalogue is no obstacle")
    else:
        require_failure(place, run)
    place.restore()
    place.require_clean_next_run()


def onto_full_device(place, command, arguments):
    with open("/dev/full", "wb") as full:
        run = place.run(command, *arguments, stdout=full)
    require(run.returncode == 2, f"the exit status is 2, not {run.returncode}")
    require(len(run.stderr.splitlines()) == 1, f"one line tells it: {run.stderr}")
    place.require_whole()
    place.restore()


def as_device(place):
    run = place.run("create", "/dev/full", place.tree)
    require(run.returncode == 2 and run.stderr, f"a device is no catalogue: {run}")
    with open("/dev/full", "wb") as full:
        run = place.run("list", "nowhere", stdout=full, stderr=full)
    require(run.returncode == 2, "the exit status says it where nothing can be printed")


def attack(program, step):
    place = Place(program)
    limits = Figure("runs below a limit of file sizes", "status 2, one line, the earlier catalogue whole")
    for limit in range(0, len(place.new) + step, step):
        limits.attempt(with_size_limit, place, limit)

    full = Figure("runs onto /dev/full", "status 2 and one line")
    for command, arguments in (("list", [CATALOGUE]), ("verify", [CATALOGUE]), ("create", [CATALOGUE, place.tree])):
        full.attempt(onto_full_device, place, command, arguments)
    full.attempt(as_device, place)

    folder = Path(tempfile.mkdtemp(prefix="tov-small-"))
    mount_small(folder)
    small = Figure("runs on a disk of 64 KiB", "status 2, one line, the earlier catalogue whole, or success")
    small_place = Place(program, folder, place.tree)
    for free in range(0, len(small_place.new) + 3 * PAGE, PAGE):
        small.attempt(on_small_disk, small_place, free, small)
    subprocess.run(["umount", str(folder)], check=True)
    return all([limits.tell(), full.tell(), small.tell(0 < small.notes.get("with room enough", 0) < small.runs)])
