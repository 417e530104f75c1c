"""Random meshes and results, and the files that hold them."""
import math
import struct

NO_VALUE = -99999.0


def single(value):
    return struct.unpack("<f", struct.pack("<f", value))[0]


class Model:
    """nodes: (x, y, z) by number from 1; cells: the nodes of each as its card lists them, by number from 1."""

    def __init__(self, random):
        self.random = random
        self.across = random.randint(3, 9)
        self.up = max(2, round(self.across / 1.7))
        self.current = random.random() < 0.6  # the flavour with parts, 9-node quads and datum flags
        self.exact = random.random() < 0.3    # points on a lattice, so that sides meet cells of a grid exactly
        self.lay()
        self.part = None
        if self.current and random.random() < 0.5:
            self.part = "weir %d" % random.randint(1, 99)
            self.removed = set(range(len(self.cells) - random.randint(1, len(self.cells) // 3), len(self.cells)))
        else:
            self.removed = set()

    def lay(self):
        random, wide, high = self.random, 8 * self.random.randint(2, 12), 8 * self.random.randint(2, 12)
        turn = 0.0 if self.exact else random.uniform(-math.pi, math.pi)
        self.step = math.hypot(wide, high)
        places = {}
        for row in range(self.up + 1):
            for column in range(self.across + 1):
                shift = 0.0 if self.exact else 0.22
                x, y = (column + random.uniform(-shift, shift)) * wide, (row + random.uniform(-shift, shift)) * high
                places[2 * column, 2 * row] = (300000 + x * math.cos(turn) - y * math.sin(turn),
                                               6200000 + x * math.sin(turn) + y * math.cos(turn))
        rings = []
        nines = self.current and random.random() < 0.5
        for row in range(0, 2 * self.up, 2):
            for column in range(0, 2 * self.across, 2):
                ring = [(column, row), (column + 2, row), (column + 2, row + 2), (column, row + 2)]
                kind = random.random()
                if kind < 0.1 and rings:
                    continue
                if kind < 0.4:
                    ring = ring[1:] + ring[:1] if random.random() < 0.5 else ring
                    rings += [[ring[0], ring[1], ring[2]], [ring[0], ring[2], ring[3]]]
                elif nines:
                    middle = [((a[0] + b[0]) // 2, (a[1] + b[1]) // 2) for a, b in zip(ring, ring[1:] + ring[:1])]
                    for place, (a, b) in zip(middle, zip(ring, ring[1:] + ring[:1])):
                        places[place] = tuple((p + q) / 2 for p, q in zip(places[a], places[b]))
                    centre = (column + 1, row + 1)
                    places[centre] = tuple(sum(places[c][axis] for c in ring) / 4 for axis in (0, 1))
                    rings.append([place for pair in zip(ring, middle) for place in pair] + [centre])
                else:
                    rings.append(ring)
        names = list(places)
        random.shuffle(names)
        random.shuffle(rings)
        number = {name: k + 1 for k, name in enumerate(names)}
        self.nodes = [None] + [(round(places[n][0], 3), round(places[n][1], 3), single(round(random.uniform(0, 30), 2)))
                               for n in names]
        self.cells = [None] + [[number[c] for c in (ring if random.random() < 0.5 or len(ring) == 9 else ring[::-1])]
                               for ring in rings]

    def write_mesh(self, name):
        lines, offset = [], 0.0
        cards = ["%-3s %d %s %d" % ({3: "E3T", 4: "E4Q", 9: "E9Q"}[len(cell)], k, " ".join(map(str, cell)), k % 7 + 1)
                 for k, cell in list(enumerate(self.cells))[1:]]
        if self.current:
            offset = 2.5
            lines.append("MESH2D " + " ".join("%14.4f" % v for v in (0, 0, 0, 1, 1, 10, 10, offset)))
            cards = [card + " 0 0 1" for card in cards]
        else:
            lines.append("MESH2D")
        points = []
        for k, (x, y, z) in list(enumerate(self.nodes))[1:]:
            raised = self.current and k % 3 == 0
            points.append("ND %d %.3f %.3f %.2f" % (k, x, y, z + offset if raised else z) +
                          (" %d 0 0 0" % raised if self.current else ""))
        self.random.shuffle(points)
        order = [k for k in range(1, len(self.cells)) if k not in self.removed]
        self.random.shuffle(order)
        lines += points + [cards[k - 1] for k in order]
        if self.part:
            lines += ['MESHPART "%s"' % self.part] + [cards[k - 1] for k in sorted(self.removed)]
        with open(name, "w", newline="\n") as file:
            file.write("\n".join(lines) + "\n")


class Dataset:
    """values: a list by time of lists by node or cell from 1, of tuples of one or two components; wet: flags or None."""

    def __init__(self, model, components, cells, quantity="Tracer"):
        random = model.random
        self.quantity, self.components = quantity, components
        self.times = [single(round(k * 0.75, 2)) for k in range(3)]
        count = len(model.cells if cells else model.nodes) - 1
        self.values = [[None] + [tuple(single(random.uniform(-5, 40)) for _ in range(components)) for _ in range(count)]
                       for _ in self.times]
        for values in self.values:
            for _ in range(random.choice((0, 0, 1, count // 6))):
                values[random.randint(1, count)] = (NO_VALUE,) * components
        flagged = random.random() < 0.8
        self.wet = [[0] + [int(random.random() < 0.8) for _ in model.cells[1:]] if flagged else None for _ in self.times]
        self.flags = len(model.cells) - 1

    def write(self, name):
        card = lambda *numbers: struct.pack("<%di" % len(numbers), *numbers)
        with open(name, "wb") as file:
            file.write(card(3000, 100, 3, 110, 4, 120, 1, 130 if self.components == 1 else 140))
            file.write(card(160, 1, 170, len(self.values[0]) - 1, 180, self.flags, 190))
            file.write(self.quantity.ljust(40).encode())
            for time, values, wet in zip(self.times, self.values, self.wet):
                file.write(card(200) + struct.pack("<bf", wet is not None, time) + bytes(wet[1:] if wet else b""))
                numbers = [number for value in values[1:] for number in value]
                file.write(struct.pack("<%df" % len(numbers), *numbers))
            file.write(card(210))
