#!/usr/bin/env python3
"""tools/pictures/make_pictures.py: draws every picture of the program anew into app/resources.

Needs rsvg-convert (librsvg2-bin), ImageMagick 6 and the Liberation fonts. The pictures are kept in the
repository, so only somebody who changes a drawing needs this."""

import pathlib
import shutil
import subprocess
import sys
import tempfile

import icofile
import ip_picture
import node_icons
import program_icon
import start_picture

if len(sys.argv) > 1:
    print(__doc__)
    sys.exit(0 if sys.argv[1:] == ["--help"] else 2)
RESOURCES = pathlib.Path(__file__).resolve().parents[2] / "app" / "resources"
MAGICK = next((name for name in ("convert-im6.q16", "convert") if shutil.which(name)), None)


def run(*command):
    subprocess.run([str(part) for part in command], check=True)


def rendered(svg, folder):
    source = folder / "picture.svg"
    target = folder / "picture.png"
    source.write_text(svg, encoding="utf-8")
    run("rsvg-convert", source, "-o", target)
    return target


def photograph(name, svg, size, quality, sampling, folder):
    # Stripped and without a time stamp: the same drawing gives the same file.
    run(MAGICK, rendered(svg, folder), "-resize", size, "-strip", "-sampling-factor", sampling, "-quality", quality,
        RESOURCES / name)


def icon(name, draw, sizes, folder):
    images = []
    for size in sizes:
        png = rendered(draw(size), folder)
        if size >= icofile.PNG_FROM:
            run(MAGICK, png, "-strip", "-define", "png:exclude-chunks=date,time", "-quality", "95", png)
            images.append((size, png.read_bytes()))
        else:
            raw = folder / "picture.bgra"
            run(MAGICK, png, "-depth", "8", f"BGRA:{raw}")
            images.append((size, icofile.bitmap(size, raw.read_bytes())))
    (RESOURCES / name).write_bytes(icofile.icon(images))


def main():
    if not shutil.which("rsvg-convert") or not MAGICK:
        sys.exit("make_pictures: rsvg-convert (librsvg2-bin) and ImageMagick are needed")
    RESOURCES.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        # Twice: most screens get by with the small one, which is decoded in a quarter of the time.
        photograph("StartPicture.jpg", start_picture.picture(), "800x500", 86, "2x2", folder)
        photograph("StartPicture200.jpg", start_picture.picture(), "1600x1000", 75, "2x2", folder)
        photograph("IpPicture.jpg", ip_picture.picture(), "192x192", 90, "1x1", folder)
        icon("TarvService.ico", program_icon.picture, (16, 20, 24, 32, 40, 48, 64, 128, 256), folder)
        icon("ClosedFolder.ico", node_icons.closed_folder, (16, 20, 24, 32, 48), folder)
        icon("Document.ico", node_icons.sheet, (16, 20, 24, 32, 48), folder)
    for picture in sorted(RESOURCES.iterdir()):
        if picture.suffix in (".jpg", ".ico"):
            print(f"{picture.stat().st_size:8} {picture.name}")


if __name__ == "__main__":
    main()
