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
HORIZON = 770  # canvas row of the far distance
FOCAL = 2530.0  # canvas pixels per metre at one metre from the eye
EYE = 1.85  # height of the eye above the road
dice = random.Random(1986)
out = []


def project(x, y, z):
    return WIDTH / 2 + FOCAL * x / y, HORIZON - FOCAL * (z - EYE) / y


def path(points, fill, close=True, **attributes):
    text = "M" + " ".join(f"{x:.1f},{y:.1f}" for x, y in points) + ("Z" if close else "")
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
    gradient("field", [(0, "#8a5a34"), (.25, "#4a3a2c"), (1, "#161a26")])
    gradient("road", [(0, "#f0b868"), (.2, "#b97f4c"), (.6, "#6d4a3a"), (1, "#2b2230")])
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
    for _ in range(90):
        x, y = dice.uniform(0, WIDTH), dice.uniform(0, 420) ** 1.0
        size = dice.choice((1.2, 1.6, 2.4))
        out.append(f'<circle cx="{x:.0f}" cy="{y:.0f}" r="{size}" fill="#fff4d6" opacity="{.8 * (1 - y / 430):.2f}"/>')
    out.append('<circle cx="640" cy="690" r="620" fill="url(#sun)"/>')
    for x, y, w, h, colour in ((150, 560, 620, 22, "#ffb765"), (900, 520, 760, 18, "#e8846a"),
                               (1500, 590, 700, 22, "#f09a62"), (420, 470, 520, 14, "#b8607a"),
                               (1800, 455, 560, 14, "#7c4a80"), (1180, 640, 520, 14, "#ffc47a"),
                               (60, 640, 380, 12, "#ffd48a"), (2100, 650, 420, 14, "#f3a565")):
        cloud(x, y, w, h, colour)


def cloud(x, y, w, h, colour):
    """A long flat streak whose upper edge bulges, lit from below."""
    top = [(x + w * i / 12, y - h * math.sin(math.pi * i / 12) * dice.uniform(.6, 1.8)) for i in range(13)]
    bottom = [(x + w * i / 6, y + h * .35 * math.sin(math.pi * i / 6)) for i in range(6, -1, -1)]
    path(top + bottom, colour, opacity=.75, stroke=colour, stroke_width=6, stroke_linejoin="round")


def ridge(seed, base, swing):
    """A hill line: canvas row at column x."""
    phase = random.Random(seed)
    waves = [(phase.uniform(0, 6.3), 2 * math.pi / phase.uniform(w * .8, w * 1.2), swing * a)
             for w, a in ((2400, 1), (1100, .5), (420, .16))]
    return lambda x: base + sum(a * math.sin(p + k * x) for p, k, a in waves)


def hill(line, colour, foot):
    top = [(x, line(x)) for x in range(-20, WIDTH + 41, 20)]
    path(top + [(WIDTH + 40, foot), (-20, foot)], colour)


def pine(x, y, height, dark, lit):
    """A fir of ragged tiers; the side towards the sun, which stands on the left, is lit."""
    tiers = 7
    width = height * dice.uniform(.46, .56)
    left, right = [(x, y - height)], [(x, y - height)]
    for i in range(1, tiers + 1):
        level = y - height + height * .94 * i / tiers
        reach = width / 2 * (i / tiers) ** .85
        for side, row in ((-1, left), (1, right)):
            r = reach * dice.uniform(.85, 1.1)
            row += [(x + side * r, level + height * .015), (x + side * r * .62, level - height * .012)]
    path([(x - height * .02, y), (x - height * .02, y - height * .1), (x + height * .02, y - height * .1), (x + height * .02, y)], dark)
    path(left + right[::-1], dark)
    shade = [(x + (px - x) * .15 + height * .01, py) for px, py in left]
    path(left + shade[::-1], lit, opacity=.8)


def forest(line, step, height, dark, lit, keep=lambda x: True):
    x = -30.0
    while x < WIDTH + 30:
        if keep(x):
            h = height * dice.uniform(.6, 1.25)
            pine(x, line(x) + h * .12, h, dark, lit)
        x += step * dice.uniform(.5, 1.4)


def hills():
    far, middle, near = ridge(3, 690, 46), ridge(8, 728, 34), ridge(15, 765, 22)
    hill(far, "#7a4a78", 900)
    hill(lambda x: far(x) + 26 + 10 * math.sin(x / 90), "#6a3f70", 900)
    hill(middle, "#4a2f62", 900)
    forest(middle, 26, 52, "#3a2658", "#8a4f68")
    hill(near, "#2b2148", 900)
    forest(near, 40, 100, "#1c1a40", "#7d4a58", lambda x: not 1500 < x < 1760)


def road_edges():
    """Both edges of the road on the ground: it comes round from the right and runs out to the left."""
    inner, outer = [], []
    for i in range(61):
        t = i / 60
        depth = 6.0 + 150 * t ** 2.6
        centre = -3.5 + 13 * math.sin(min(1, t * 1.3) * math.pi / 2) ** 1.5 + 30 * t ** 4
        half = 6.5
        inner.append(project(centre - half, depth, 0))
        outer.append(project(centre + half, depth, 0))
    return inner, outer


def ground():
    out.append(f'<rect y="{HORIZON + 8}" width="{WIDTH}" height="{HEIGHT - HORIZON}" fill="url(#field)"/>')
    inner, outer = road_edges()
    path(inner + outer[::-1], "url(#road)")
    path(inner, "none", False, stroke="#ffd68a", stroke_width=7, opacity=.6)
    for _ in range(420):  # tufts along the road and in the field, catching the low sun
        depth = 7 + 70 * dice.random() ** 2
        x, y = project(dice.uniform(-24, 26) * depth / 16, depth, 0)
        tall = 330 / depth * dice.uniform(.5, 1.3)
        colour = mix("#e0a050", "#3a3438", dice.random() ** .5)
        if not inside_road(x, y, inner, outer):
            path([(x - tall * .5, y), (x - tall * .3, y - tall), (x, y - tall * .4), (x + tall * .25, y - tall * 1.2), (x + tall * .5, y)], colour, opacity=.7)


def inside_road(x, y, inner, outer):
    for (ix, iy), (ox, oy) in zip(inner, outer):
        if abs(iy - y) < 14 and ix - 20 < x < ox + 20:
            return True
    return False


# --- cars --------------------------------------------------------------------------------------

def pose(x, y, heading, roll):
    """A car's own metres (forward, left, up) to the canvas; `roll` leans it out of the bend."""
    c, s = math.cos(math.radians(heading)), math.sin(math.radians(heading))
    lean = math.tan(math.radians(roll))

    def place(f, l, u):
        u = u + l * lean
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


def car(place, paint, stripe, number, wing, steer):
    shadow(place)
    wheel(place, 1.27, -.62, steer)
    wheel(place, -1.27, -.62)
    rear_wing(place, paint, wing)
    body_side(place, paint, stripe)
    cabin(place, paint)
    nose(place, paint, stripe)
    wheel_arch(place, paint, -1.27, 0)
    wheel_arch(place, paint, 1.27, steer)
    details(place, paint, stripe, number)
    lamps(place)


def shadow(place):
    path([place(f, l, 0) for f, l in ((2.2, 1), (2.2, -1.0), (.5, -2.0), (-2.2, -2.1), (-2.4, -.6), (-2.2, 1), (0, 1.15))],
         "#0a0818", opacity=.6, stroke="#0a0818", stroke_width=26, stroke_linejoin="round", stroke_opacity=.5)


def rear_wing(place, paint, wing):
    solid(place, [(-1.6, .7, .95), (-1.8, .7, .95), (-1.9, .7, wing), (-1.65, .7, wing)], "#1a1430")
    solid(place, [(-1.6, -.7, .95), (-1.8, -.7, .95), (-1.9, -.7, wing), (-1.65, -.7, wing)], "#1a1430")
    solid(place, [(-1.6, .86, wing), (-1.6, -.86, wing), (-2.0, -.86, wing + .1), (-2.0, .86, wing + .1)], f"url(#{paint}-top)")
    solid(place, [(-1.6, .86, wing), (-1.6, -.86, wing), (-1.6, -.86, wing - .06), (-1.6, .86, wing - .06)], f"url(#{paint}-front)")
    solid(place, [(-1.5, .88, wing - .12), (-2.05, .88, wing - .12), (-2.05, .88, wing + .16), (-1.5, .88, wing + .06)], "#1a1430")


def body_side(place, paint, stripe):
    y = .88
    solid(place, [(1.86, y, .2), (1.9, y, .5), (1.84, y, .72), (.85, y, .93), (-1.6, y, .97), (-1.98, y * .93, .92), (-2.04, y * .93, .55), (-1.96, y, .2)], f"url(#{paint}-side)")
    solid(place, [(1.84, y, .72), (.85, y, .93), (-1.6, y, .97), (-1.98, y * .93, .92), (-1.97, y, .86), (.85, y + .02, .84), (1.86, y, .64)], "#fff0c8", opacity=.35)
    solid(place, [(1.87, y, .56), (-2.02, y, .62), (-2.03, y, .5), (1.89, y, .46)], stripe)
    solid(place, [(1.86, y + .01, .2), (-1.96, y + .01, .2), (-1.96, y + .01, .3), (1.87, y + .01, .3)], "#12122a")


def cabin(place, paint):
    solid(place, [(.9, .86, .93), (.15, .64, 1.37), (-1.25, .62, 1.37), (-1.8, .82, .96)], f"url(#{paint}-side)")
    solid(place, [(.74, .84, .97), (.14, .66, 1.31), (-.38, .65, 1.32), (-.42, .83, .97)], "url(#glass-side)", stroke="#0a0f28")
    solid(place, [(-.5, .83, .97), (-.46, .65, 1.32), (-1.1, .64, 1.31), (-1.5, .81, .99)], "url(#glass-side)", stroke="#0a0f28")
    solid(place, [(.4, .78, 1.05), (.08, .67, 1.28), (-.1, .67, 1.28), (.18, .78, 1.05)], "#ffd9a0", opacity=.5)
    solid(place, both([(.16, .62, 1.37), (-.4, .66, 1.41), (-1.27, .6, 1.38)]), f"url(#{paint}-top)")
    solid(place, [(.14, .3, 1.385), (.14, -.3, 1.385), (.1, -.28, 1.47), (.1, .28, 1.47)], "#140f24")
    solid(place, [(.1, .28, 1.47), (.1, -.28, 1.47), (-.5, -.28, 1.42), (-.5, .28, 1.42)], f"url(#{paint}-top)")
    solid(place, both([(.92, .84, .94), (.14, .62, 1.37)]), "url(#glass)", stroke="#0a0f28")
    solid(place, [(.86, .5, .97), (.2, .36, 1.34), (.2, .12, 1.34), (.86, .2, .97)], "#fff3d0", opacity=.28)
    solid(place, both([(.25, .62, 1.31), (.14, .61, 1.37)]), "#ffd14f")


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


def wheel_arch(place, paint, f, steer):
    path(ring(place, f, .9, .34, .42, 0, -20, 200), "#07060f")
    wheel(place, f, .88, steer)
    outer = ring(place, f, .94, .34, .47, 0, -14, 194)
    inner = ring(place, f, .96, .34, .38, 0, -14, 194)
    path(outer + inner[::-1], f"url(#{paint}-side)")
    path(ring(place, f, .94, .34, .47, 0, 20, 170), "none", False, stroke="#ffe3b8", stroke_width=5, opacity=.7)


def details(place, paint, stripe, number):
    roundel(place, number)
    solid(place, [(.8, .9, .98), (.62, .9, .98), (.62, 1.08, 1.0), (.78, 1.08, 1.0), (.78, 1.08, 1.12), (.8, .9, 1.1)], f"url(#{paint}-front)")
    solid(place, [(-1.72, .9, .3), (-1.72, .66, .3), (-1.78, .66, .06), (-1.78, .9, .06)], stripe)


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
        r = size * (.25 + t) * dice.uniform(.7, 1.2)
        puffs.append((x + dx * t + dice.gauss(0, size * .35 * t), y + dy * t + dice.gauss(0, size * .3 * t) - r * .3, r, t))
    for shift, shrink, colour in ((0, 1, "#6b4548"), (.14, .84, "#b0764e"), (.28, .6, "#e3a05c"), (.4, .34, "#fbce86")):
        out.append(f'<g fill="{colour}" opacity="{strength}">')
        for px, py, r, t in puffs:
            out.append(f'<circle cx="{px - r * shift:.0f}" cy="{py - r * shift:.0f}" r="{r * shrink:.0f}"/>')
        out.append("</g>")


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
    x, letters = 0, ""
    for letter in "BRINDLE RUN":
        letters += f'<use href="#{letter}" x="{x}"/>' if letter != " " else ""
        x += advance.get(letter, 36)
    out.append(f'<g id="title">{letters}</g>')
    shown = out.pop()
    out.append(f"<defs>{shown}</defs>")
    out.append('<g transform="translate(308,92) skewX(-12) scale(2.3)">')
    out.append('<use href="#title" transform="translate(2.5,6)" stroke="#050818" stroke-width="21" stroke-linejoin="round" fill="#050818" opacity=".85"/>')
    out.append('<use href="#title" stroke="url(#rim)" stroke-width="19" stroke-linejoin="round" fill="none"/>')
    out.append('<use href="#title" stroke="#160a26" stroke-width="9" stroke-linejoin="round" fill="#160a26"/>')
    out.append('<use href="#title" fill="url(#gold)"/></g>')


def picture():
    definitions()
    sky()
    hills()
    ground()
    dust(2050, 1000, 620, -190, 150, 46, .85)
    car(pose(3.0, 12.6, 180 + 46, -2), "blue", "#f2f7ff", 7, 1.34, 14)
    dust(2030, 1090, 340, -60, 70, 22, .8)
    dust(1130, 1130, 300, -60, 90, 24, .85)
    car(pose(-1.75, 9.6, 180 + 52, -2.5), "red", "#ffcf4a", 4, 1.28, 16)
    dust(1150, 1190, 260, -20, 50, 18, .8)
    foreground()
    title()


def main():
    picture()
    head = f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}">'
    pathlib.Path(sys.argv[1]).write_text("\n".join([head, *out, "</svg>", ""]), encoding="utf-8")


main()
