#!/usr/bin/env python3
"""Writes the title picture to the SVG file named: two rally cars drift out of a bend at dusk.

Scenery and cars stand in one small world, in metres: X to the right, Y away from us, Z up. One
camera puts all of it on the canvas, so that road, wheels and shadows agree. Everything random comes
from one seed: the same text every time. The lettering is borrowed from lettering.svg beside this.
"""
import math
import pathlib
import random
import re
import sys

WIDTH, HEIGHT = 2560, 1440
HORIZON = 765  # canvas row of the far distance
FOCAL = 2530.0  # canvas pixels per metre at one metre from the eye
EYE = 1.6  # height of the eye above the road
SUN = (640, 690)  # canvas; the light of the whole picture comes from here
dice = random.Random(1986)
out = []


def project(x, y, z):
    return WIDTH / 2 + FOCAL * x / y, HORIZON - FOCAL * (z - EYE) / y


def path(points, fill, close=True, **attributes):
    text = "M" + " ".join(f"{x:.1f},{y:.1f}" for x, y in points) + ("Z" if close else "")
    if "opacity" in attributes and ("stroke" not in attributes or fill == "none"):
        # much cheaper to render than the opacity of a group
        attributes["fill_opacity" if fill != "none" else "stroke_opacity"] = attributes.pop("opacity")
    more = "".join(f' {k.replace("_", "-")}="{v}"' for k, v in attributes.items())
    out.append(f'<path d="{text}" fill="{fill}"{more}/>')


def mix(a, b, t):
    pairs = zip(bytes.fromhex(a[1:]), bytes.fromhex(b[1:]))
    return "#" + "".join(f"{round(p + (q - p) * t):02x}" for p, q in pairs)


def gradient(name, stops, x1=0, y1=0, x2=0, y2=1):
    marks = "".join(
        f'<stop offset="{o}" stop-color="{c}"' + (f' stop-opacity="{a[0]}"' if a else "") + "/>"
        for o, c, *a in stops)
    out.append(f'<linearGradient id="{name}" x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}">{marks}</linearGradient>')


def glow(name, stops):
    marks = "".join(f'<stop offset="{o}" stop-color="{c}" stop-opacity="{a}"/>' for o, c, a in stops)
    out.append(f'<radialGradient id="{name}">{marks}</radialGradient>')


# --- definitions -------------------------------------------------------------------------------

def definitions():
    letters = pathlib.Path(__file__).with_name("lettering.svg").read_text(encoding="utf-8")
    out.append("<defs>")
    out.extend(re.findall(r"<path id=.*?/>", letters))
    gradient("sky", [(0, "#070c26"), (.22, "#101b48"), (.45, "#3a2f6b"), (.62, "#8a4468"),
                     (.76, "#d96a4c"), (.88, "#f7a94a"), (1, "#ffe08a")])
    gradient("field", [(0, "#b4713c"), (.12, "#7a5436"), (.35, "#453a30"), (1, "#141824")])
    gradient("road", [(0, "#ffd890"), (.06, "#efb468"), (.25, "#b97c4e"), (.5, "#7d5442"), (1, "#33262f")])
    gradient("foot", [(0, "#070a1c", 0), (.6, "#070a1c", .85), (1, "#050715", 1)])
    gradient("gold", [(0, "#fffbe0"), (.2, "#ffe48a"), (.47, "#ffc02e"), (.5, "#a8500e"),
                      (.6, "#e98a17"), (.85, "#ffd95e"), (1, "#fff3b4")])
    gradient("rim", [(0, "#ff6a4d"), (.55, "#d2262e"), (1, "#7a0f22")])
    gradient("red-top", [(0, "#ff8d6a"), (1, "#e5423c")])
    gradient("red-side", [(0, "#f2605a"), (.45, "#cf2f35"), (1, "#6d0f24")])
    gradient("red-front", [(0, "#d93a3a"), (1, "#8a1628")])
    gradient("blue-top", [(0, "#a9ccff"), (1, "#5590f0")])
    gradient("blue-side", [(0, "#78abf8"), (.45, "#3a6ede"), (1, "#152b72")])
    gradient("blue-front", [(0, "#4c83ea"), (1, "#1f3f98")])
    gradient("glass", [(0, "#0a1238"), (.6, "#2b3a7a"), (1, "#d9805a")])
    gradient("glass-side", [(0, "#101a45"), (1, "#5a4a80")])
    glow("sun", [(0, "#fffbe0", 1), (.18, "#ffeaa0", 1), (.2, "#ffcf6a", .75), (.5, "#ff9a4a", .3), (1, "#ff8a4a", 0)])
    glow("beam", [(0, "#ffffff", 1), (.12, "#fff6cc", .9), (.35, "#ffe6a0", .35), (1, "#ffd980", 0)])
    out.append("</defs>")


# --- scenery -----------------------------------------------------------------------------------

def sky():
    out.append(f'<rect width="{WIDTH}" height="{HORIZON + 40}" fill="url(#sky)"/>')
    for _ in range(110):
        x, y = dice.uniform(0, WIDTH), dice.uniform(0, 420)
        size = dice.choice((1.2, 1.6, 2.4))
        out.append(f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{size}" fill="#fff4d6" fill-opacity="{.8 * (1 - y / 430):.2f}"/>')
    for ray in range(-172, 0, 14):
        a, b = math.radians(ray), math.radians(ray + 6)
        path([SUN, (SUN[0] + 3000 * math.cos(a), SUN[1] + 3000 * math.sin(a)),
              (SUN[0] + 3000 * math.cos(b), SUN[1] + 3000 * math.sin(b))], "#ffcf8a", opacity=.07)
    out.append(f'<circle cx="{SUN[0]}" cy="{SUN[1]}" r="620" fill="url(#sun)"/>')
    for x, y, w, h, colour in ((130, 520, 640, 22, "#f3a062"), (900, 500, 760, 18, "#e8846a"),
                               (1560, 560, 700, 22, "#f09a62"), (420, 440, 520, 14, "#b8607a"),
                               (1800, 430, 560, 14, "#7c4a80"), (1000, 610, 520, 14, "#ffc47a"),
                               (30, 600, 380, 12, "#ffd48a"), (2100, 640, 420, 14, "#f3a565")):
        cloud(x, y, w, h, colour)
    for x, y, span in ((980, 430, 26), (1050, 455, 20), (1110, 420, 16), (1006, 490, 14)):
        out.append(f'<path d="M{x - span},{y - span * .3:.0f} Q{x - span * .4:.0f},{y - span * .6:.0f} {x},{y} '
                   f'Q{x + span * .4:.0f},{y - span * .6:.0f} {x + span},{y - span * .3:.0f}" fill="none" stroke="#2a1c48" stroke-width="4"/>')


def cloud(x, y, w, h, colour):
    """A long flat streak whose upper edge bulges, lit from below."""
    top = [(x + w * i / 12, y - h * math.sin(math.pi * i / 12) * dice.uniform(.6, 1.8)) for i in range(13)]
    bottom = [(x + w * i / 6, y + h * .35 * math.sin(math.pi * i / 6)) for i in range(6, -1, -1)]
    path(top + bottom, colour, opacity=.75, stroke=colour, stroke_width=6, stroke_linejoin="round")


def ridge(seed, base, swing, valley):
    """A hill line: canvas row at column x. `valley` is how far it sinks around the sun."""
    phase = random.Random(seed)
    waves = [(phase.uniform(0, 6.3), 2 * math.pi / phase.uniform(w * .8, w * 1.2), swing * a)
             for w, a in ((1900, 1), (800, .5), (330, .16))]

    def row(x):
        dip = valley * math.exp(-((x - SUN[0] - 120) / 520) ** 2)
        return base + dip + sum(a * math.sin(p + k * x) for p, k, a in waves)
    return row


def hill(line, colour, foot):
    top = [(x, line(x)) for x in range(-20, WIDTH + 41, 20)]
    path(top + [(WIDTH + 40, foot), (-20, foot)], colour)


def mountains(peaks, foot, shade, lit):
    """A chain of peaks (column, row); each face that looks at the sun is lit."""
    saddles = [((a[0] + b[0]) / 2 + dice.uniform(-30, 30), max(a[1], b[1]) + dice.uniform(20, 60)) for a, b in zip(peaks, peaks[1:])]
    chain = [p for pair in zip(peaks, saddles) for p in pair] + [peaks[-1]]
    path(chain + [(peaks[-1][0], foot), (peaks[0][0], foot)], shade, stroke=shade, stroke_width=8, stroke_linejoin="round")
    for x, y in peaks[1:-1]:
        side = -1 if x > SUN[0] else 1
        reach = (foot - y) * .85
        path([(x, y), (x + side * reach * .95, y + reach * .75), (x + side * reach * .45, y + reach * .62),
              (x + side * reach * .3, y + reach), (x + side * reach * .06, y + reach * .5), (x + side * reach * .1, y + reach * .3)], lit, opacity=.6)


def pine(x, y, height, dark, lit):
    """A fir of ragged tiers; the side towards the sun is lit."""
    tiers = 7
    width = height * dice.uniform(.46, .56)
    sides = {-1: [(x, y - height)], 1: [(x, y - height)]}
    for i in range(1, tiers + 1):
        level = y - height + height * .94 * i / tiers
        reach = width / 2 * (i / tiers) ** .85
        for side, row in sides.items():
            r = reach * dice.uniform(.85, 1.1)
            row += [(x + side * r, level + height * .015), (x + side * r * .62, level - height * .012)]
    path([(x - height * .02, y), (x - height * .02, y - height * .1), (x + height * .02, y - height * .1), (x + height * .02, y)], dark)
    path(sides[-1] + sides[1][::-1], dark)
    bright = sides[-1 if x > SUN[0] else 1]
    path(bright + [(x + (px - x) * .25, py) for px, py in bright[::-1]], lit, opacity=.8)


def forest(line, step, height, dark, lit, keep=lambda x: True):
    x = -30.0
    while x < WIDTH + 30:
        if keep(x):
            h = height * dice.uniform(.6, 1.25)
            pine(x, line(x) + h * .12, h, dark, lit)
        x += step * dice.uniform(.5, 1.4)


def hills():
    mountains([(-60, 560), (120, 505), (330, 600), (480, 680), (880, 680), (1080, 570), (1290, 505), (1480, 590),
               (1700, 480), (1930, 550), (2140, 470), (2380, 540), (2620, 500)], 780, "#7c4676", "#d07a6a")
    far, middle, near = ridge(3, 622, 30, 78), ridge(8, 676, 30, 52), ridge(15, 738, 16, 22)
    hill(far, "#5f3a70", 900)
    forest(far, 20, 40, "#543268", "#a85f6e")
    hill(middle, "#452c62", 900)
    forest(middle, 25, 64, "#382556", "#94546a")
    hill(near, "#2b2148", 900)
    forest(near, 36, 104, "#1e1b42", "#86505c")


# The middle of the road: metres away from us, metres to the right. It comes from under the sun,
# swings out to the right and runs past us to the left.
ROAD = ((4, -3.2), (7, -1.2), (10, .9), (14, 3.2), (20, 5.6), (28, 6.6), (40, 5.0), (62, -2.5), (100, -19), (170, -42), (300, -72), (700, -165), (1500, -350))
ROAD_HALF = 4.6


def road_middle(depth):
    i = max(k for k in range(len(ROAD) - 1) if ROAD[k][0] <= depth)
    rows = [ROAD[max(0, min(len(ROAD) - 1, k))] for k in range(i - 1, i + 3)]
    (_, a), (d1, b), (d2, c), (_, d) = rows
    t = math.log(depth / d1) / math.log(d2 / d1)
    return b + .5 * t * (c - a + t * (2 * a - 5 * b + 4 * c - d + t * (3 * (b - c) + d - a)))


def along_road(offset, near=4.3, far=1400, count=120):
    """Canvas points of a line that keeps `offset` metres to the right of the road's middle."""
    depths = [near * (far / near) ** (i / count) for i in range(count + 1)]
    return [project(road_middle(d) + offset, d, 0) for d in depths]


def ground():
    out.append(f'<rect y="{HORIZON + 6}" width="{WIDTH}" height="{HEIGHT - HORIZON}" fill="url(#field)"/>')
    hedge()
    for _ in range(60):  # swathes of meadow
        depth = 10 + 140 * dice.random() ** 2
        x, y = project(dice.uniform(-.6, .6) * depth, depth, 0)
        w, h = dice.uniform(200, 700), 1500 / depth * dice.uniform(.1, .25)
        out.append(f'<ellipse cx="{x:.0f}" cy="{y:.0f}" rx="{w:.0f}" ry="{h:.0f}" fill="{dice.choice(("#c98a4a", "#2e2a34", "#5a4632"))}" fill-opacity=".16"/>')
    path(along_road(-ROAD_HALF - .7) + along_road(ROAD_HALF + .7)[::-1], "#2f2533", opacity=.5)
    path(along_road(-ROAD_HALF) + along_road(ROAD_HALF)[::-1], "url(#road)")
    for middle in (-2.6, -1.1, .9, 2.4):  # ruts
        path(along_road(middle - .28) + along_road(middle + .28)[::-1], "#4a2c2c", opacity=.28)
    for side in (-ROAD_HALF, ROAD_HALF):
        path(along_road(side), "none", False, stroke="#ffdf9a", stroke_width=5, opacity=.5)
    stones_and_tufts()


def hedge():
    """Bushes where the wood meets the meadow."""
    for x in range(-20, WIDTH + 40, 30):
        w, h = dice.uniform(24, 60), dice.uniform(7, 15)
        out.append(f'<ellipse cx="{x}" cy="{HORIZON + 6}" rx="{w:.0f}" ry="{h:.0f}" fill="#2b2148"/>')


def stones_and_tufts():
    for _ in range(260):
        depth = 7.5 + 22 * dice.random() ** 1.5
        x, y = project(road_middle(depth) + dice.uniform(-ROAD_HALF, ROAD_HALF), depth, 0)
        size = dice.uniform(20, 70) / depth
        out.append(f'<ellipse cx="{x:.0f}" cy="{y:.0f}" rx="{size:.1f}" ry="{size * .45:.1f}" fill="{dice.choice(("#3a2430", "#f6c98a", "#6e4638"))}" fill-opacity=".6"/>')
    tufts = sorted((7 + 70 * dice.random() ** 1.6 for _ in range(1300)), reverse=True)
    for depth in tufts:
        across = dice.uniform(-.55, .55) * depth
        if abs(across - road_middle(depth)) < ROAD_HALF + .3:
            continue
        x, y = project(across, depth, 0)
        tall = 330 / depth * dice.uniform(.5, 1.3)
        colour = mix("#d89a50", "#2e2833", dice.random() ** .5)
        path([(x - tall * .5, y), (x - tall * .75, y - tall * .8), (x - tall * .2, y - tall * .3), (x - tall * .1, y - tall * 1.2), (x + tall * .15, y - tall * .35),
              (x + tall * .7, y - tall), (x + tall * .5, y)], colour, opacity=.75)


def roadside():
    for depth, across, tall in ((66, -31, 7), (60, -27.5, 5), (54, -27, 7.5), (48, -23, 5), (66, 21, 6), (58, 20, 8), (52, 22, 6.5), (47, 19.5, 6),
                                (42, -20.5, 6), (40, 18.6, 7), (36, 17.4, 4), (35, -17, 4), (32, 15.4, 6.5)):
        x, y = project(across, depth, 0)
        pine(x, y, FOCAL * tall / depth, "#1a1838", "#7d465a")
    farmhouse(-41, 104)
    fence()
    for depth in (60, 52, 45, 39, 34, 30, 27):
        chevron(depth)


def farmhouse(x, depth):
    """A house and a barn at the edge of the wood, with the lamps already lit."""
    def at(points):
        return [project(x + px, depth, pz) for px, pz in points]
    path(at([(3.2, 0), (3.2, 2.4), (5.6, 3.9), (8, 2.4), (8, 0)]), "#3a2038")
    path(at([(3.0, 2.3), (5.6, 4.1), (8.2, 2.3), (8.0, 2.2), (5.6, 3.7), (3.2, 2.2)]), "#1e1634")
    path(at([(4.6, 0), (4.6, 1.9), (6.6, 1.9), (6.6, 0)]), "#24142c")
    path(at([(-4, 0), (-4, 2.8), (3, 2.8), (3, 0)]), "#4a2a40")
    path(at([(-4.5, 2.7), (-3, 5), (2, 5), (3.5, 2.7)]), "#271a3a")
    path(at([(2, 5), (3.5, 2.7), (3.2, 2.7), (1.75, 5)]), "#e08a5a")
    path(at([(.2, 4.6), (.2, 5.9), (1, 5.9), (1, 4.6)]), "#3a2038")
    for left in (-3.2, -1.4, 1.5):
        path(at([(left, 1.1), (left, 2.1), (left + .9, 2.1), (left + .9, 1.1)]), "#ffdf7a", stroke="#2a1830", stroke_width=3)
    path(at([(.2, 0), (.2, 2), (1.0, 2), (1.0, 0)]), "#2a1830")
    drift = [(.4, 6), (.3, 6.8), (.7, 7.6), (1.6, 8.2), (1.9, 8.9), (3, 9.5), (5, 9.8), (7.4, 9.9)]
    back = [(5, 10.1), (2.6, 10.1), (1.2, 9.3), (.9, 8.6), (.1, 8), (-.1, 7), (.8, 6)]
    path(at(drift + back), "#f4c79a", opacity=.32, stroke="#f4c79a", stroke_width=4, stroke_linejoin="round")


def fence():
    """A rail fence along the left of the road, with people behind it."""
    spots = [16 * 1.12 ** i for i in range(13)]
    posts = [(road_middle(d) - ROAD_HALF - 1.6, d) for d in spots]
    for i in range(26):
        d = 64 - 1.35 * i + dice.uniform(-.5, .5)
        spectator(road_middle(d) - ROAD_HALF - 2.3 - dice.uniform(0, 1.6), d + .6)
    for up in (.5, .9):
        path([project(x, d, up) for x, d in posts] + [project(x, d, up - .1) for x, d in posts[::-1]], "#2a1a2c")
        path([project(x, d, up) for x, d in posts], "none", False, stroke="#ffc57a", stroke_width=3, opacity=.7)
    for x, d in posts:
        path([project(x - .07, d, 0), project(x - .07, d, 1.05), project(x + .07, d, 1.05), project(x + .07, d, 0)], "#2a1a2c", stroke="#2a1a2c")
        path([project(x - .07, d, 0), project(x - .07, d, 1.05)], "none", False, stroke="#ffc57a", stroke_width=3, opacity=.7)


def spectator(x, depth):
    tall = dice.uniform(1.55, 1.8)
    coat = dice.choice(("#3a2450", "#5a2440", "#26305e", "#4a3040"))

    def at(points):
        return [project(x + px, depth, pz * tall) for px, pz in points]
    path(at([(-.24, 0), (-.27, .55), (-.2, .82), (.2, .82), (.27, .55), (.24, 0)]), coat, stroke=coat, stroke_width=4, stroke_linejoin="round")
    if dice.random() < .6:
        lift = dice.uniform(1.02, 1.15)
        path(at([(-.2, .8), (-.42, lift)]), "none", False, stroke=coat, stroke_width=.16 * FOCAL / depth, stroke_linecap="round")
        path(at([(.2, .8), (.4, lift)]), "none", False, stroke=coat, stroke_width=.16 * FOCAL / depth, stroke_linecap="round")
    path(at([(-.27, .5), (-.2, .82)]), "none", False, stroke="#ffc57a", stroke_width=4, stroke_linecap="round", opacity=.8)
    head, radius = project(x, depth, tall * .92), .13 * FOCAL / depth
    out.append(f'<circle cx="{head[0]:.1f}" cy="{head[1]:.1f}" r="{radius:.1f}" fill="#2a1730"/>')
    out.append(f'<circle cx="{head[0] - radius * .3:.1f}" cy="{head[1] - radius * .15:.1f}" r="{radius * .6:.1f}" fill="#c98058"/>')


def chevron(depth):
    """A board with an arrow on the outside of the bend, pointing the way it goes."""
    x = road_middle(depth) + ROAD_HALF + 1.4

    def at(points):
        return [project(x + px, depth, pz) for px, pz in points]
    path(at([(-.06, 0), (-.06, .5), (.06, .5), (.06, 0)]), "#1a1228")
    path(at([(-.75, .45), (-.75, 1.35), (.75, 1.35), (.75, .45)]), "#f6ead0", stroke="#2a1a2c", stroke_width=3)
    for shift in (-.5, .0, .5):
        path(at([(shift - .2, .9), (shift + .05, 1.33), (shift + .25, 1.33), (shift, .9), (shift + .25, .47), (shift + .05, .47)]), "#cf2f35")


# --- cars --------------------------------------------------------------------------------------

def pose(x, y, heading, roll=0.0, dive=0.0):
    """A car's own metres (forward, left, up) to the canvas.

    `roll` degrees lean the body to the left, `dive` degrees press its nose down."""
    c, s = math.cos(math.radians(heading)), math.sin(math.radians(heading))
    lean, pitch = math.tan(math.radians(roll)), math.tan(math.radians(dive))

    def place(f, l, u):
        l, u = l - (u - .3) * lean * .6, u - l * lean - f * pitch
        return project(x + f * c - l * s, y + f * s + l * c, u)
    return place


def ring(place, f, l, u, radius, steer=0.0, start=0, stop=360, count=32):
    """Points of an upright circle, turned by `steer` degrees about its own vertical axis."""
    c, s = math.cos(math.radians(steer)), math.sin(math.radians(steer))
    angles = [math.radians(start + (stop - start) * i / count) for i in range(count + 1)]
    return [place(f + radius * math.cos(a) * c, l + radius * math.cos(a) * s, u + radius * math.sin(a)) for a in angles]


def hull(points):
    points = sorted(points)

    def half(row):
        chain = []
        for p in row:
            while len(chain) > 1 and ((chain[-1][0] - chain[-2][0]) * (p[1] - chain[-2][1])
                                      - (chain[-1][1] - chain[-2][1]) * (p[0] - chain[-2][0])) <= 0:
                chain.pop()
            chain.append(p)
        return chain[:-1]
    return half(points) + half(points[::-1])


def wheel(place, f, l, steer=0.0):
    turn = math.radians(steer)
    inner = (f + .24 * math.sin(turn), l - .24 * math.cos(turn))
    path(hull(ring(place, f, l, .33, .33, steer) + ring(place, *inner, .33, .33, steer)), "#0b0d1c")
    path(ring(place, f, l, .33, .32, steer), "#1b1c2e")
    path(ring(place, f, l, .33, .225, steer), "#8a5a14")
    path(ring(place, f, l, .33, .21, steer), "#f7c845")
    for spoke in range(0, 360, 72):
        path(ring(place, f, l, .33, .19, steer, spoke + 12, spoke + 60, 6) + [place(f, l, .33)], "#3a2410")
    path(ring(place, f, l, .33, .06, steer), "#fff0b0")


def solid(place, points, fill, **attributes):
    attributes.setdefault("stroke", fill)
    path([place(*p) for p in points], fill, stroke_width=3, stroke_linejoin="round", **attributes)


def both(points):
    """A left edge given front to back, closed by its mirror image."""
    return points + [(f, -l, u) for f, l, u in reversed(points)]


def car(x, y, heading, paint, stripe, number, tail, wing, steer):
    """`tail`: where the roof ends and where its rear window meets the body, metres behind the middle."""
    flat = pose(x, y, heading)
    place = pose(x, y, heading, 3.2, 1.0)
    shadow(flat)
    wheel(flat, 1.27, -.62, steer)
    wheel(flat, -1.27, -.62)
    rear_wing(place, paint, wing)
    body_side(place, paint, stripe)
    cabin(place, paint, *tail)
    nose(place, paint, stripe)
    mud_flap(place, stripe)
    wheel_arch(flat, place, paint, -1.27, 0)
    wheel_arch(flat, place, paint, 1.27, steer)
    details(place, paint, stripe, number)
    lamps(place)


def shadow(place):
    path([place(f, l, 0) for f, l in ((2.2, 1), (2.2, -1.0), (.5, -2.0), (-2.2, -2.1), (-2.4, -.6), (-2.2, 1), (0, 1.15))],
         "#0a0818", opacity=.55, stroke="#0a0818", stroke_width=14, stroke_linejoin="round")


def rear_wing(place, paint, wing):
    solid(place, [(-1.6, .7, .95), (-1.8, .7, .95), (-1.9, .7, wing), (-1.65, .7, wing)], "#1a1430")
    solid(place, [(-1.6, -.7, .95), (-1.8, -.7, .95), (-1.9, -.7, wing), (-1.65, -.7, wing)], "#1a1430")
    solid(place, [(-1.6, .86, wing), (-1.6, -.86, wing), (-1.98, -.86, wing + .03), (-1.98, .86, wing + .03)], f"url(#{paint}-top)")
    solid(place, [(-1.6, .86, wing), (-1.6, -.86, wing), (-1.6, -.86, wing - .06), (-1.6, .86, wing - .06)], f"url(#{paint}-front)")
    solid(place, [(-1.5, .88, wing - .12), (-2.05, .88, wing - .12), (-2.05, .88, wing + .1), (-1.5, .88, wing + .04)], f"url(#{paint}-front)")


def body_side(place, paint, stripe):
    y = .88
    solid(place, [(1.86, y, .2), (1.9, y, .5), (1.84, y, .72), (.85, y, .93), (-1.6, y, .97), (-1.98, y * .93, .92), (-2.04, y * .93, .55), (-1.96, y, .2)], f"url(#{paint}-side)")
    solid(place, [(1.84, y, .72), (.85, y, .93), (-1.6, y, .97), (-1.98, y * .93, .92), (-1.97, y, .86), (.85, y + .02, .84), (1.86, y, .64)], "#fff0c8", opacity=.35)
    solid(place, [(1.87, y, .56), (-1.9, y, .62), (-1.9, y, .5), (1.89, y, .46)], stripe)
    solid(place, [(1.86, y + .01, .2), (-1.96, y + .01, .2), (-1.96, y + .01, .3), (1.87, y + .01, .3)], "#12122a")


def cabin(place, paint, roof_end, foot):
    solid(place, [(1.84, .88, .7), (.8, .88, .88), (.7, .86, 1.0), (.95, .85, .94)], f"url(#{paint}-side)")
    solid(place, [(.9, .86, .93), (.15, .64, 1.37), (-roof_end, .62, 1.37), (-foot, .82, .96)], f"url(#{paint}-side)")
    solid(place, [(.74, .84, .97), (.14, .66, 1.31), (-.34, .65, 1.32), (-.38, .83, .97)], "url(#glass-side)", stroke="#0a0f28")
    solid(place, [(-.46, .83, .97), (-.42, .65, 1.32), (-roof_end + .12, .64, 1.31), (-foot + .3, .81, .99)], "url(#glass-side)", stroke="#0a0f28")
    solid(place, [(.4, .78, 1.05), (.08, .67, 1.28), (-.1, .67, 1.28), (.18, .78, 1.05)], "#ffd9a0", opacity=.5)
    solid(place, both([(.16, .62, 1.37), (-.4, .64, 1.4), (-roof_end, .6, 1.37)]), f"url(#{paint}-top)")
    path([place(*p) for p in ((.16, -.6, 1.38), (-.4, -.62, 1.41), (-roof_end, -.6, 1.38))], "none", False, stroke="#ffe9b0", stroke_width=6, stroke_linecap="round")
    solid(place, [(.14, .3, 1.385), (.14, -.3, 1.385), (.1, -.28, 1.46), (.1, .28, 1.46)], "#140f24")
    solid(place, [(.1, .28, 1.46), (.1, -.28, 1.46), (-.5, -.28, 1.41), (-.5, .28, 1.41)], f"url(#{paint}-top)")
    solid(place, both([(.92, .84, .94), (.14, .62, 1.37)]), "url(#glass)", stroke="#0a0f28")
    for l, helmet in ((.33, "#8d90bd"), (-.33, "#a87f5c")):
        crew(place, l, helmet)
    solid(place, [(.86, .62, .97), (.2, .46, 1.34), (.2, .3, 1.34), (.86, .38, .97)], "#fff3d0", opacity=.25)
    solid(place, both([(.25, .62, 1.31), (.14, .61, 1.37)]), "#ffd14f")


def crew(place, l, helmet):
    """Driver and co-driver behind the windscreen: shoulders, helmet, visor."""
    solid(place, [(.66, l + .2, 1.0), (.6, l + .16, 1.08), (.6, l - .16, 1.08), (.66, l - .2, 1.0)], "#221a3c")
    x, y = place(.46, l, 1.13)
    r = abs(place(.46, l + .12, 1.13)[0] - place(.46, l - .12, 1.13)[0]) * .62
    path([(x - r, y + r), (x - r, y), (x - r * .7, y - r * .7), (x, y - r), (x + r * .7, y - r * .7), (x + r, y), (x + r, y + r)],
         helmet, opacity=.75, stroke=helmet, stroke_width=3, stroke_linejoin="round")
    path([(x - r * 1.05, y - r * .2), (x + r * .5, y - r * .2), (x + r * .5, y + r * .35), (x - r * 1.05, y + r * .35)], "#12102c",
         stroke="#12102c", stroke_width=4, stroke_linejoin="round")


def light_pool(place):
    for spread, strength in ((1.0, .10), (.7, .12), (.45, .14)):
        path([place(f, l * spread, 0) for f, l in ((2.1, .7), (4.2, 1.9), (5.4, 1.5), (5.8, 0), (5.4, -1.5), (4.2, -1.9), (2.1, -.7))],
             "#ffe9a8", opacity=strength, stroke="#ffe9a8", stroke_width=20, stroke_linejoin="round")


def nose(place, paint, stripe):
    solid(place, both([(2.02, .66, .72), (1.84, .88, .72), (.92, .86, .94)]), f"url(#{paint}-top)")
    for l in (.22, -.1):
        solid(place, [(2.03, l, .725), (.92, l, .945), (.92, l - .14, .945), (2.03, l - .14, .725)], stripe)
    for l in (.62, -.4):
        solid(place, [(1.45, l, .835), (1.2, l, .885), (1.2, l - .2, .885), (1.45, l - .2, .835)], "#1a1228")
    for l0, l1, f0, f1 in ((.68, .88, 2.04, 1.86), (-.68, -.88, 2.04, 1.86)):
        solid(place, [(f0, l0, .2), (f1, l1, .2), (f1 + .03, l1, .5), (f1 - .02, l1, .72), (f0 - .02, l0, .72), (f0 + .02, l0, .5)], f"url(#{paint}-front)")
    solid(place, both([(2.02, .68, .72), (2.06, .68, .5), (2.04, .68, .2)])[0:6], f"url(#{paint}-front)")
    solid(place, [(2.05, .66, .68), (2.05, -.66, .68), (2.07, -.66, .52), (2.07, .66, .52)], "#100d20")
    solid(place, [(2.07, .6, .4), (2.07, -.6, .4), (2.06, -.56, .26), (2.06, .56, .26)], "#100d20")
    solid(place, [(2.08, .7, .49), (2.08, -.7, .49), (2.08, -.7, .44), (2.08, .7, .44)], stripe)
    solid(place, [(2.04, .7, .2), (2.04, -.7, .2), (2.04, -.7, .14), (2.04, .7, .14)], "#0a0a18")


def wheel_arch(flat, place, paint, f, steer):
    """The wheel shows through the opening of the arch and below the sill, nowhere else."""
    arc = ring(place, f, .9, .34, .42, 0, -20, 200)
    name = f"opening{len(out)}"
    out.append(f'<clipPath id="{name}">')
    path(arc + [place(f - .42, .9, .2), place(f - .6, .9, -.4), place(f + .9, .9, -.4), place(f + .9, .9, .2)], "#fff")
    out.append(f'</clipPath><g clip-path="url(#{name})">')
    path(arc, "#07060f")
    wheel(flat, f, .88, steer)
    out.append("</g>")
    outer = ring(place, f, .94, .34, .47, 0, -14, 194)
    inner = ring(place, f, .94, .34, .4, 0, -14, 194)
    path(outer + inner[::-1], f"url(#{paint}-side)")
    path(ring(place, f, .94, .34, .47, 0, 20, 170), "none", False, stroke="#ffe3b8", stroke_width=5, opacity=.7)


def details(place, paint, stripe, number):
    seam = {"stroke": "#1a0a1c", "stroke_width": 3, "opacity": .55}
    path([place(*q) for q in ((.72, .9, .93), (.66, .9, .36), (-.44, .9, .34), (-.42, .9, .95))], "none", False, **seam)
    path([place(*q) for q in ((-.2, .905, .83), (-.34, .905, .835))], "none", False, stroke="#1a0a1c", stroke_width=7, stroke_linecap="round")
    roundel(place, number)
    solid(place, [(.8, .9, .98), (.62, .9, .98), (.62, 1.08, 1.0), (.78, 1.08, 1.0), (.78, 1.08, 1.12), (.8, .9, 1.1)], f"url(#{paint}-front)")


def mud_flap(place, colour):
    solid(place, [(-1.72, .9, .3), (-1.72, .66, .3), (-1.78, .66, .06), (-1.78, .9, .06)], colour)


def roundel(place, number):
    f, l, u, r = -.02, .9, .6, .26
    path(ring(place, f, l, u, r), "#fff8e6", stroke="#1a1228", stroke_width=4)
    digits = {4: ((-.03, .17), (.13, -.05), (-.11, -.05), None, (-.03, .17), (-.03, -.17)),
              7: ((.12, .15), (-.12, .15), (.03, -.17))}
    stroke = []
    for point in digits[number] + (None,):
        if point is None:
            path(stroke, "none", False, stroke="#1a1a30", stroke_width=11)
            stroke = []
        else:
            stroke.append(place(f + point[0], l + .01, u + point[1]))


def lamps(place):
    for l in (.52, -.52):
        solid(place, [(2.06, l + .13, .67), (2.06, l - .13, .67), (2.08, l - .13, .54), (2.08, l + .13, .54)], "#fffbe0")
    for l in (.39, .13, -.13, -.39):
        x, y = place(2.1, l, .68)
        size = abs(place(2.1, l + .11, .68)[0] - x) * 1.25
        out.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{size * 1.18:.1f}" fill="#100d20"/><circle cx="{x:.1f}" cy="{y:.1f}" r="{size:.1f}" fill="#fffbe4"/>')
    for l, reach in ((.52, 120), (-.52, 120)):
        x, y = place(2.1, l, .64)
        out.append(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="{reach}" fill="url(#beam)" opacity=".5"/>')


# --- dust --------------------------------------------------------------------------------------

def dust(x, y, dx, dy, size, count, strength):
    """A plume of round puffs that grows from (x, y) along (dx, dy); lit from the upper left."""
    puffs = []
    for i in range(count):
        t = (i / count) ** .8
        r = size * (.42 + .8 * t) * dice.uniform(.7, 1.2)
        puffs.append((x + dx * t + dice.gauss(0, size * .35 * t), y + dy * t + dice.gauss(0, size * .3 * t) - r * .3, r, t))
    for shift, shrink, colour in ((0, 1, "#6b4548"), (.14, .84, "#b0764e"), (.28, .6, "#e3a05c"), (.4, .34, "#fbce86")):
        out.append(f'<g fill="{colour}" opacity="{strength}">')
        for px, py, r, t in puffs:
            out.append(f'<circle cx="{px - r * shift:.0f}" cy="{py - r * shift:.0f}" r="{r * shrink:.0f}"/>')
        out.append("</g>")


def flung(x, y):
    """Stones and clods that a rear wheel throws back."""
    for _ in range(34):
        angle, reach = math.radians(dice.uniform(-62, -4)), 260 * dice.random() ** .7
        px, py = x + reach * math.cos(angle), y + reach * math.sin(angle) * .8 + (reach / 90) ** 2 * 4
        size = dice.uniform(2.5, 8)
        path([(px - size, py), (px, py - size * .8), (px + size, py + size * .2), (px + size * .1, py + size * .7)], dice.choice(("#3a2430", "#5a3a38", "#ffdf9a")))


# --- foreground and title ----------------------------------------------------------------------

def foreground():
    out.append(f'<rect y="1180" width="{WIDTH}" height="260" fill="url(#foot)"/>')
    for x, y, h in ((-70, 1470, 1080), (90, 1500, 700), (230, 1490, 400), (2630, 1480, 1140), (2470, 1500, 760), (2330, 1490, 420)):
        pine(x, y, h, "#090d26", "#33264a")
    for i in range(150):
        x = WIDTH * (i + dice.random()) / 150
        tall = dice.uniform(18, 54) + 60 * abs(x / WIDTH - .5)
        path([(x - 16, 1445), (x - 10, 1440 - tall), (x - 2, 1445 - tall * .3), (x + 12, 1436 - tall * 1.1), (x + 18, 1445)], "#060a1e")


def title():
    advance = {"B": 92, "R": 93, "I": 39, "N": 93, "D": 93, "L": 73, "E": 77, "U": 94}
    x, letters, holes = 0, "", ""
    for letter in "BRINDLE RUN":
        letters += f'<use href="#{letter}" x="{x}"/>' if letter != " " else ""
        holes += f'<use href="#{letter}-hole" x="{x}"/>' if letter in "BRD" else ""
        x += advance.get(letter, 36)
    out.append(f'<defs><g id="title">{letters}</g><g id="title-holes">{holes}</g></defs>')
    out.append('<g transform="translate(308,92) skewX(-12) scale(2.3)">')
    out.append('<use href="#title" transform="translate(2.5,6)" stroke="#050818" stroke-width="21" stroke-linejoin="round" fill="#050818" opacity=".85"/>')
    out.append('<use href="#title" stroke="url(#rim)" stroke-width="19" stroke-linejoin="round" fill="none"/>')
    out.append('<use href="#title-holes" fill="#160a26"/>')
    out.append('<use href="#title" stroke="#160a26" stroke-width="9" stroke-linejoin="round" fill="#160a26"/>')
    out.append('<use href="#title" fill="url(#gold)" stroke="#fff6cf" stroke-width="1.6" stroke-linejoin="round"/></g>')


def picture():
    definitions()
    sky()
    hills()
    ground()
    roadside()
    dust(2080, 1000, 560, -170, 100, 64, 1)
    car(2.7, 12.4, 180 + 44, "blue", "#f2f7ff", 7, (.95, 1.4), 1.26, 14)
    dust(2150, 1062, 300, -50, 62, 24, 1)
    flung(2130, 1080)
    dust(1400, 1080, 120, -50, 46, 18, 1)
    light_pool(pose(-1.45, 10.7, 180 + 50))
    car(-1.45, 10.7, 180 + 50, "red", "#ffcf4a", 4, (1.25, 1.8), 1.22, 16)
    dust(1330, 1120, 230, -20, 46, 18, 1)
    flung(1310, 1130)
    foreground()
    title()


def softened(drawing):
    """The drawing with its edges spread over its neighbours.

    A screen smaller than the picture shows some of its pixels and drops the others. The filter
    would let the black behind shine in at the border, so it takes in what lies beyond it.
    """
    edges = f'x="-8" y="-8" width="{WIDTH + 16}" height="{HEIGHT + 16}"'
    return [f'<filter id="soften" color-interpolation-filters="sRGB" filterUnits="userSpaceOnUse" {edges}><feGaussianBlur stdDeviation=".8"/></filter>',
            f'<rect {edges} fill="#070c26"/>', '<g filter="url(#soften)">', *drawing, "</g>"]


def main():
    picture()
    head = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}">'
    pathlib.Path(sys.argv[1]).write_text("\n".join([head, *softened(out), "</svg>", ""]), encoding="utf-8")


main()
