"""What is made of each run: the `products` of the configuration, lists of switches."""
import os
import shlex
import subprocess

# what the workflow gives itself, or what needs a person or another input
NOT_IN_PRODUCTS = ("-b", "-out", "-into", "-2dm", "-wld", "-xnfo", "-help", "-version")
NUMBERED = ("-jobs", "-mem")
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

    def without_all_times(self):
        return [switch for switch in self.switches if switch.lower() != "-tall"]


def refused(switch):
    lower = switch.lower()
    return lower in NOT_IN_PRODUCTS or lower.startswith(NUMBERED)


def complaint(program, switches):
    """What the program says of the switches when its input does not exist; blank when it gets as far as looking for it."""
    try:
        ended = subprocess.run([program, "-b", *switches, NO_INPUT], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                               stderr=subprocess.STDOUT, timeout=60)
    except (OSError, subprocess.TimeoutExpired) as failure:
        return str(failure)
    lines = ended.stdout.decode("utf-8", "replace").splitlines()
    unknown = [line for line in lines if line.startswith("Check - ") and "is not known and ignored" in line]
    if unknown:
        return unknown[0]
    if any(line.startswith("WARNING - File %s does not exist" % NO_INPUT) for line in lines):
        return ""
    asked = [line for line in lines if "End of input reached while waiting" in line]
    errors = [line for line in lines if line.lower().startswith("error")]
    if asked:
        return "its switches leave a question open"
    return " ".join(errors[:1]) or "the program ends with status %d" % ended.returncode


def read_product(name, configured, program):
    product = Product(name, configured)
    try:
        product.switches = shlex.split(product.text)
    except ValueError as failure:
        product.problem = "%s: %s" % (failure, product.text)
        return product
    taken = [switch for switch in product.switches if refused(switch)]
    if taken:
        product.problem = "%s belongs to the workflow" % taken[0]
    elif "-grid" in product.switches and not any(s.lower() == "-like" for s in product.switches):
        product.problem = "-grid without a spacing asks a question"
    elif product.split_times and any(s.lower() == "-sec" for s in product.switches):
        product.problem = "-sec cannot be cut by split_times, whose parts are told in hours"
    else:
        product.problem = complaint(program, product.switches)
    product.files = [word for word in product.switches if not word.startswith("-") and os.path.isfile(word)]
    return product


def products_of(configured, program, check):
    """check: False in the jobs of a run whose products have been looked at."""
    products = {}
    for name, switches in configured.items():
        product = read_product(name, switches, program) if check else Product(name, switches)
        if not check:
            product.switches = shlex.split(product.text)
            product.files = [word for word in product.switches if not word.startswith("-") and os.path.isfile(word)]
        products[name] = product
    return products
