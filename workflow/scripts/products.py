"""What is made of each run: the `products` of the configuration, lists of switches."""
import os
import shlex
import subprocess

# what the workflow gives itself, or what needs a person or another input
NOT_IN_PRODUCTS = ("-b", "-out", "-into", "-2dm", "-wld", "-xnfo", "-help", "-version")
NUMBERED = ("-jobs", "-mem")
NAMING_FILES = ("-like", "-mesh2", "-dif")
NO_INPUT = "no such input.dat"


class Product:
    def __init__(self, name, configured):
        if isinstance(configured, str):
            configured = {"switches": configured}
        self.name = name
        self.text = configured["switches"]
        self.split_times = configured.get("split_times", 0)
        self.merge = configured.get("merge", "")
        self.switches = []
        self.files = []  # that the switches name
        self.problem = ""  # why it cannot be made, blank when it can

    def geotiff(self):
        return any(switch.lower().startswith("-gtif") for switch in self.switches)

    def without_all_times(self):
        return [switch for switch in self.switches if switch.lower() != "-tall"]


def refused(switch):
    lower = switch.lower()
    return lower in NOT_IN_PRODUCTS or lower.startswith(NUMBERED)


def said_by(program, switches):
    """What the program says when its input does not exist."""
    ended = subprocess.run([program, "-b", NO_INPUT, *switches], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                           stderr=subprocess.STDOUT, timeout=60)
    return [line.strip() for line in ended.stdout.decode("utf-8", "replace").splitlines() if line.strip()]


def complaint(program, switches):
    """What the program has against the switches; blank when it gets as far as looking for its input."""
    try:
        lines = said_by(program, switches)
    except (OSError, subprocess.TimeoutExpired) as failure:
        return str(failure)
    for line in lines:
        if line.startswith("WARNING - Nothing specified after ") or "is not known and ignored" in line:
            return line
        if line.startswith("WARNING - Only one input file "):
            return "%s is no switch, and the input is the workflow's" % line.partition(": ")[2].partition(" replaces ")[0]
    if any(line.startswith("WARNING - File %s does not exist" % NO_INPUT) for line in lines):
        return ""
    for number, line in enumerate(lines):
        if "End of input reached while waiting" in line:
            return "asks a question: " + " ".join(lines[max(number - 1, 0):number])
        if line.lower().startswith("error"):
            return " ".join([line, *(more for more in lines[number + 1:number + 3] if more.startswith(("from argument", "did you mean")))])
    return "the program says nothing of its input"


def file_missing(switches):
    """The program looks for some files only when it has its input."""
    for switch, word in zip(switches, switches[1:]):
        if switch.lower() in NAMING_FILES and not os.path.isfile(word):
            return "%s: the file %s does not exist" % (switch, word)
    return ""


def problem_of(product, program):
    taken = [switch for switch in product.switches if refused(switch)]
    if taken:
        return "%s belongs to the workflow" % taken[0]
    if "-grid" in map(str.lower, product.switches) and "-like" not in map(str.lower, product.switches):
        return "-grid without a spacing asks a question"
    problem = complaint(program, product.switches) or file_missing(product.switches)
    named = any(switch in problem for switch in product.switches)
    return problem if named or not problem else "%s: %s" % (product.text, problem)


def read_product(name, configured):
    product = Product(name, configured)
    try:
        product.switches = shlex.split(product.text)
    except ValueError as failure:
        product.problem = "%s: %s" % (product.text, failure)
    product.files = [word for word in product.switches if not word.startswith("-") and os.path.isfile(word)]
    return product


def products_of(configured, program, check):
    """check: False in the jobs of a run whose products have been looked at."""
    products = {name: read_product(name, switches) for name, switches in configured.items()}
    for product in products.values() if check else ():
        product.problem = product.problem or problem_of(product, program)
    return products
