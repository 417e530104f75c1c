"""The value of a mesh at a point, by looking at every element: slow, and plain to read."""
import math

MISSING = -99998.0


def triangles_of(nodes, ring, values):
    """The triangles of a piece that have values at all their corners; each leaves one corner of a quad out."""
    corners = [ring] if len(ring) == 3 else [ring[:k] + ring[k + 1:] for k in range(4)]
    return [[(nodes[n][0], nodes[n][1], values(n)) for n in three] for three in corners
            if all(values(n) > MISSING for n in three)]


def inside(triangle, x, y, room):
    """How a point lies to a triangle whose sides are moved outwards by `room`."""
    (ax, ay, _), (bx, by, _), (cx, cy, _) = triangle
    turn = math.copysign(1.0, (bx - ax) * (cy - ay) - (cx - ax) * (by - ay))
    for (px, py), (qx, qy) in (((ax, ay), (bx, by)), ((bx, by), (cx, cy)), ((cx, cy), (ax, ay))):
        left = turn * ((qx - px) * (y - py) - (qy - py) * (x - px)) / math.hypot(qx - px, qy - py)
        if left < -room:
            return False
    return True


def plane(triangle, x, y):
    (ax, ay, a), (bx, by, b), (cx, cy, c) = triangle
    area = (bx - ax) * (cy - ay) - (cx - ax) * (by - ay)
    v = ((x - ax) * (cy - ay) - (cx - ax) * (y - ay)) / area
    w = ((bx - ax) * (y - ay) - (x - ax) * (by - ay)) / area
    return a + v * (b - a) + w * (c - a)


def pieces_of(cell, values):
    """A 9-node quad is four quads around its centre where every inner node has a value, else the quad of its corners."""
    if len(cell) < 9:
        return [cell]
    if any(values(n) <= MISSING for n in [*cell[1:8:2], cell[8]]):
        return [cell[0:8:2]]
    return [[cell[k], cell[k + 1], cell[8], cell[(k + 7) % 8]] for k in range(0, 8, 2)]


class Surface:
    """values: by node from 1, or by cell with per_cell; wet: flags by cell from 1, or None."""

    def __init__(self, model, values, wet, per_cell=False):
        self.model, self.pieces = model, []
        for number, cell in list(enumerate(model.cells))[1:]:
            if (wet and not wet[number]) or number in model.removed:
                continue
            if per_cell:
                own = values[number]
                for ring in [cell[0:8:2] if len(cell) == 9 else cell]:
                    self.pieces.append(triangles_of(model.nodes, ring, lambda n: own))
                continue
            for ring in pieces_of(cell, lambda n: values[n]):
                self.pieces.append(triangles_of(model.nodes, ring, lambda n: values[n]))

    def at(self, x, y, room):
        """The largest of the elements' values; of a quad the mean over its triangles around the point. None outside."""
        found = None
        for triangles in self.pieces:
            around = [plane(t, x, y) for t in triangles if inside(t, x, y, room)]
            if around:
                mean = sum(around) / len(around)
                found = mean if found is None else max(found, mean)
        return found

    def agrees(self, value, x, y, tolerance, near=1e-6):
        """Whether a value is right here. A point nearer to a side than `near` may lie on either of its sides."""
        near = [1e-5] if self.model.exact and near < 1e-5 else [-near, near]
        answers = [self.at(x, y, room) for room in near]
        if value is None or value <= MISSING:
            return None in answers
        return any(a is not None and abs(a - value) <= tolerance for a in answers)
