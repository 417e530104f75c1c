"""Files that are whole or not there: written beside their place and renamed."""
import os


def write_whole(path, text):
    os.makedirs(os.path.dirname(path) or ".", exist_ok=True)
    beside = "%s.%d.part" % (path, os.getpid())
    try:
        with open(beside, "w", encoding="utf-8") as handle:
            handle.write(text)
        os.replace(beside, path)
    except OSError:
        if os.path.exists(beside):
            os.remove(beside)
        raise
