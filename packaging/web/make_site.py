#!/usr/bin/env python3
"""Puts the game together as a folder for any web server: make_site.py PROGRAMS GAME SITE VERSION

PROGRAMS holds brindle-run and brindle-ghost as .js and .wasm, GAME art/, music/, sounds/ and
tracks/ of a finished game. SITE gets index.html, which holds the page's own scripts, and parcels
beside it. A parcel's name tells what is in it (a digest), so that a page and its parcels always fit
together, however a browser or a server caches them.

The first parcels hold what the game cannot start without, packed here: no server needs to. Songs
and the tracks' pictures are parcels of their own, fetched when one is due; in the first parcel lies
each track's picture in small.
"""

import gzip
import hashlib
import json
import pathlib
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
# Pixels: the menu shows 130 a picture at 1280 x 720, the report 200 or so.
SMALL_HEIGHT = 390
TRACK_QUALITY = "86"
# What a name may be written in; the faces have letters of many more scripts.
LETTERS = "U+0020-024F,U+0370-03FF,U+0400-052F,U+1E00-1EFF,U+2010-2044,U+20AC,U+2190-2193,U+2212"
SCRIPTS = ("parcels.js", "shelf.js", "records.js", "page.js", "exchange.js")


def run(*command):
    subprocess.run([str(word) for word in command], check=True)


class Site:
    def __init__(self, game, site, making):
        self.game, self.site, self.making = game, site, making

    def made(self, name, source, make):
        """The file of that name made from `source`, anew only if the source is newer."""
        target = self.making / name
        if not target.exists() or target.stat().st_mtime < source.stat().st_mtime:
            target.parent.mkdir(parents=True, exist_ok=True)
            make(source, target)
        return target

    def keep(self, stem, suffix, content):
        """Writes a file of the site; its name has no letters that an address would encode."""
        plain = "".join(sign if sign.isalnum() else "-" for sign in stem.lower())
        name = f"{plain}-{hashlib.sha256(content).hexdigest()[:12]}{suffix}"
        (self.site / name).write_bytes(content)
        return name

    def parcel(self, stem, files):
        """Packs [(path, bytes)] into one file."""
        content = b"".join(content for _, content in files)
        packed = gzip.compress(content, 9, mtime=0)
        return {"url": self.keep(stem, ".gz", packed), "size": len(packed), "unpacked": len(content),
                "files": [(path, len(content)) for path, content in files]}

    def single(self, path, source, title):
        content = source.read_bytes()
        url = self.keep(pathlib.Path(path).stem, source.suffix, content)
        return {"url": url, "size": len(content), "title": title}

    def face(self, source):
        return self.made(f"fonts/{source.name}", source, lambda face, target: run(
            "/usr/bin/python3", "-m", "fontTools.subset", face, f"--unicodes={LETTERS}",
            "--layout-features=kern", "--legacy-kern", "--notdef-outline", "--glyph-names",
            "--name-IDs=*", f"--output-file={target}"))

    def jpeg(self, name, source, *options):
        return self.made(name, source, lambda picture, target: run(
            "convert", picture, *options, "-sampling-factor", "4:2:0", "-strip",
            f"jpeg:{target}"))

    def first_files(self):
        """What is at hand from the start, as (path in the game's folder, bytes)."""
        for kind in ("art", "sounds"):
            for source in sorted((self.game / kind).rglob("*.*")):
                path = source.relative_to(self.game).as_posix()
                if path.startswith("art/fonts/"):
                    source = self.face(source)
                elif path == "art/intro.png":
                    source = self.jpeg(path, source, "-quality", "90")
                yield path, source.read_bytes()
        for source in self.tracks():
            picture = self.picture_of(source)
            small = self.jpeg(f"small/{picture.name}", picture, "-resize", f"x{SMALL_HEIGHT}",
                              "-quality", "85")
            yield f"tracks/{picture.name}", small.read_bytes()
            yield f"tracks/{source.name}.gz", gzip.compress(source.read_bytes(), 9, mtime=0)

    def tracks(self):
        return sorted((self.game / "tracks").glob("[1-9]_*.trk"))

    @staticmethod
    def picture_of(track):
        return track.with_suffix(".png")

    def later_files(self):
        for source in sorted((self.game / "music").glob("*.mp3")):
            yield f"music/{source.name}", self.single(source.name, source, "music")
        for track in self.tracks():
            source = self.picture_of(track)
            picture = self.jpeg(f"{track.stem}.jpg", source, "-quality", TRACK_QUALITY)
            yield f"tracks/{source.name}", self.single(source.name, picture, track.stem[2:])


def programs(folder, *names):
    return [(name, (folder / name).read_bytes()) for name in names]


def licences():
    root = HERE.parent.parent
    sources = [root / "LICENSE", *sorted((root / "build/libs-src").glob("*/debian/copyright")),
               *sorted(pathlib.Path("/usr/share/doc").glob("fonts-*/copyright")),
               pathlib.Path("/usr/share/doc/fluidr3mono-gm-soundfont/copyright"),
               pathlib.Path("/usr/share/doc/emscripten/copyright")]
    wanted = ("roboto-unhinted", "open-sans", "sora", "kaushanscript", "dejavu-core")
    for source in sources:
        name = source.parent.parent.name if source.parent.name == "debian" else source.parent.name
        if name.startswith("fonts-") and not name.endswith(wanted) or not source.exists():
            continue
        heading = "Brindle Run" if source.name == "LICENSE" else name
        yield f"==== {heading} ====\n\n{source.read_text(encoding='utf-8', errors='replace')}\n"


def main():
    program_folder, game, site = (pathlib.Path(argument) for argument in sys.argv[1:4])
    version = sys.argv[4]
    made = Site(game, site, program_folder.parent / "pictures")
    site.mkdir(parents=True, exist_ok=True)
    for old in site.iterdir():
        old.unlink()

    first = [made.parcel("program", programs(program_folder, "brindle-run.js", "brindle-run.wasm")),
             made.parcel("game", list(made.first_files()))]
    tool = made.parcel("ghosts", programs(program_folder, "brindle-ghost.js", "brindle-ghost.wasm"))
    tool["title"] = "the tool for ghosts"
    manifest = {"first": first, "tool": tool, "later": dict(made.later_files()),
                "tracks": {track.name[0]: track.stem[2:] for track in made.tracks()}}
    title = made.jpeg("title.jpg", game / "art/intro.png", "-resize", "1280x", "-quality", "80")
    texts = {
        "version": version,
        "style": (HERE / "page.css").read_text(encoding="utf-8"),
        "script": "\n".join((HERE / name).read_text(encoding="utf-8") for name in SCRIPTS),
        "manifest": json.dumps(manifest, separators=(",", ":")),
        "icon": made.keep("icon", ".png", (game / "art/icon.png").read_bytes()),
        "title": made.keep("title", ".jpg", title.read_bytes()),
    }
    page = (HERE / "page.html").read_text(encoding="utf-8")
    for name, text in texts.items():
        page = page.replace(f"@{name}@", text)
    (site / "index.html").write_text(page, encoding="utf-8")
    (site / "licences.txt").write_text("\n".join(licences()), encoding="utf-8")

    song = manifest["later"].get("music/HiScore - Meadow Run Arcade 2.mp3", {"size": 0})["size"]
    load = (sum(parcel["size"] for parcel in first) + (site / texts["title"]).stat().st_size +
            len(gzip.compress(page.encode())))
    print(f"first load {load / 1e6:.2f} MB in gzip, with the title's song {(load + song) / 1e6:.2f} MB")


if __name__ == "__main__":
    main()
