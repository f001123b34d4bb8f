#!/usr/bin/env python3
"""Makes the font seeds: a handful of glyphs each, every font with tables of its own kind.

    make_fonts.py FOLDER        (Debian: python3-fonttools)

A seed is the byte that chooses the face of a collection, followed by the font.
"""
import io
import pathlib
import struct
import sys
import zlib

from fontTools.colorLib.builder import buildCOLR, buildCPAL
from fontTools.feaLib.builder import addOpenTypeFeaturesFromString
from fontTools.fontBuilder import FontBuilder
from fontTools.pens.t2CharStringPen import T2CharStringPen
from fontTools.pens.ttGlyphPen import TTGlyphPen
from fontTools.ttLib import TTCollection, TTFont, newTable
from fontTools.ttLib.tables.sbixGlyph import Glyph as Picture
from fontTools.ttLib.tables.sbixStrike import Strike

CHARACTERS = {
    " ": "space", "A": "A", "g": "g", "f": "f", "i": "i", "\u0633": "seen", "\u0644": "lam", "\u0915": "ka",
    "\u093F": "matra", "\u6F22": "han", "\U0001F600": "face", "\u0301": "acute",
}
GLYPHS = [".notdef", *CHARACTERS.values(), "f_i", "seen.init", "lam.fina"]
FEATURES = """
languagesystem DFLT dflt; languagesystem latn dflt; languagesystem arab dflt; languagesystem dev2 dflt;
feature liga { sub f i by f_i; } liga;
feature init { script arab; sub seen by seen.init; } init;
feature fina { script arab; sub lam by lam.fina; } fina;
feature pres { script dev2; sub matra ka' by f_i; } pres;
feature kern { pos A g -80; } kern;
markClass acute <anchor 100 700> @TOP;
feature mark { pos base A <anchor 300 700> mark @TOP; } mark;
"""


def draw(pen, name):
    size = 200 + 40 * GLYPHS.index(name)
    pen.moveTo((50, 0))
    pen.lineTo((50 + size, 0))
    pen.qCurveTo((50 + size, 350), (60, 700))
    pen.closePath()


def builder(outlines):
    fb = FontBuilder(1000, isTTF=outlines == "glyf")
    fb.setupGlyphOrder(GLYPHS)
    fb.setupCharacterMap({ord(c): name for c, name in CHARACTERS.items()})
    fb.setupHorizontalMetrics({name: (0 if name == "acute" else 600, 50) for name in GLYPHS})
    fb.setupHorizontalHeader(ascent=800, descent=-200)
    fb.setupNameTable({"familyName": "Seed", "styleName": "Regular"})
    fb.setupOS2(sTypoAscender=800, usWinAscent=800, usWinDescent=200)
    fb.setupPost(keepGlyphNames=False)
    if outlines == "glyf":
        glyphs = {}
        for name in GLYPHS:
            pen = TTGlyphPen(glyphs)
            if name == "f_i":
                pen.addComponent("f", (1, 0, 0, 1, 0, 0))
                pen.addComponent("i", (0.5, 0.25, 0, 1, 300, 0))
            elif name != "space":
                draw(pen, name)
            glyphs[name] = pen.glyph()
        fb.setupGlyf(glyphs)
    else:
        charstrings = {}
        for name in GLYPHS:
            pen = T2CharStringPen(600, None)
            draw(pen, name)
            charstrings[name] = pen.getCharString()
        fb.setupCFF("Seed", {}, charstrings, {})
    return fb


def with_features():
    font = builder("glyf").font
    addOpenTypeFeaturesFromString(font, FEATURES)
    return font


def variable():
    fb = builder("glyf")
    fb.setupFvar([("wght", 100, 400, 900, "Weight")], [])
    wide = [(0, 0), (90, 0), (90, 0), (0, 0)]
    fb.setupGvar({"A": [_variation({"wght": (0, 1, 1)}, wide + [(0, 0), (90, 0), (0, 0), (0, 0)])]})
    return fb.font


def _variation(axes, deltas):
    from fontTools.ttLib.tables.TupleVariation import TupleVariation
    return TupleVariation(axes, deltas)


def coloured():
    font = builder("glyf").font
    font["COLR"] = buildCOLR({"face": [("A", 0), ("g", 1)]})
    font["CPAL"] = buildCPAL([[(1, 0.8, 0, 1), (0, 0, 0, 0.5)]])
    return font


def png(width, height):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))
    rows = b"".join(b"\0" + bytes([200, 100, 0, 128]) * width for _ in range(height))
    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b"")


def with_pictures():
    font = builder("glyf").font
    strike = Strike(ppem=16, resolution=72)
    strike.glyphs["face"] = Picture(glyphName="face", graphicType="png ", imageData=png(5, 4))
    table = newTable("sbix")
    table.version, table.flags, table.strikes = 1, 1, {16: strike}
    font["sbix"] = table
    return font


def saved(font):
    out = io.BytesIO()
    font.save(out)
    return out.getvalue()


def collection():
    both = TTCollection()
    both.fonts = [TTFont(io.BytesIO(saved(builder(outlines).font))) for outlines in ("glyf", "CFF ")]
    return saved(both)


def main():
    folder = pathlib.Path(sys.argv[1])
    seeds = {"features.ttf": saved(with_features()), "outlines.otf": saved(builder("CFF ").font),
             "variable.ttf": saved(variable()), "layers.ttf": saved(coloured()), "pictures.ttf": saved(with_pictures())}
    for name, data in seeds.items():
        (folder / name).write_bytes(b"\0" + data)
    pair = collection()
    (folder / "collection.ttc").write_bytes(b"\1" + pair)
    (folder / "absent_face.ttc").write_bytes(b"\2" + pair[:400])
    (folder / "cut_off.ttf").write_bytes(b"\0" + seeds["features.ttf"][:900])


if __name__ == "__main__":
    main()
