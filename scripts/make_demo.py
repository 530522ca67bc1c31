#!/usr/bin/env python3
"""Builds the sample data shipped with Kestrel Pane.

Writes, below the repository's data/ folder:

  Projects/Demo.kpn         a twelve-button demo bar that uses most features
  Projects/demo_star.gif    24x24 star on a transparent background
  Projects/demo_arrow.gif   32x16 arrow on a transparent background
  Projects/demo_bg.jpg      64x64 tile for the applet background
  Projects/click.au         0.1 s click, 8-bit mono, 8000 Hz
  Samples/sample_ball.gif, Samples/sample_square.gif
  Sounds/beep.au, Sounds/beep.wav

The project file is written byte for byte as the program's own writer
writes it, so that opening and saving the demo changes nothing but the file
fields (which a save turns into full paths). The file fields hold bare file
names: the reader finds them beside the project file.

Pictures are drawn with ImageMagick; sounds are written here directly.
Standard library only.

Usage: make_demo.py [--root DIR]   (DIR defaults to the repository root)
"""

import argparse
import math
import os
import struct
import subprocess
import sys
import wave

CONVERT = "/usr/bin/convert"
CRLF = "\r\n"


# --- Values as the project file holds them --------------------------------

def rgb(r, g, b):
    """A colour as the model stores it: red in the low byte."""
    return r + 256 * g + 65536 * b


def escape_field(s):
    # Only these three: the writer leaves blanks, ";", "&" and "!" alone.
    return s.replace('"', "&!2").replace("|", "&!3").replace("^", "&!4")


def escape_name_field(s):
    return escape_field(s.replace(" ", "&!0")).replace(";", "&!1")


def b01(v):
    return "1" if v else "0"


def bool_as_int(v):
    # PositionText goes out in the int form of a 16-bit boolean.
    return "-1" if v else "0"


def line_of(fields):
    return "".join(str(f) + "|" for f in fields)


# --- The applet -------------------------------------------------------------

def applet_fields(button_count):
    return [
        460,                    # 0  AppletWidth
        200,                    # 1  AppletHeight
        button_count,           # 2  ButtonCount
        "R",                    # 3  relic; "R" sets no Radio on load
        0,                      # 4  DOWNBtn
        rgb(232, 240, 252),     # 5  BackGround
        "demo_bg.jpg",          # 6  BackImg
        3,                      # 7  BackImgStyle: Tile
        "",                     # 8  AppletProgramOVER
        "",                     # 9  AppletProgramDOWN
        "5 Home 1 336699;8 Home 1;",  # 10 AppletProgramOUT
        0,                      # 11 iBgOffsetX
        0,                      # 12 iBgOffsetY
        "6 500;1 Home;10 Home 3 150;",  # 13 AppletProgramStart
        "DemoBar",              # 14 AppletName
        b01(False),             # 15 bUnusualRepaint
        b01(False),             # 16 bDoScroll
        1,                      # 17 iScStep
        0,                      # 18 iScDelay
        0,                      # 19 iScDirection
        escape_field(""),       # 20 CodeBase
        b01(True),              # 21 bPreLoad
        rgb(255, 255, 204),     # 22 cTipBackColor
        rgb(0, 0, 0),           # 23 cTipTextColor
        rgb(0, 0, 128),         # 24 cTipBorderColor
        1,                      # 25 iTipBorderWidth
        300,                    # 26 iTipDelay
        2500,                   # 27 iTipHideAfter
        0,                      # 28 iTipFontStyle
        10,                     # 29 iTipFontSize
        0,                      # 30 iTipFont: Arial
        b01(True),              # 31 bClip
        "reserved",             # 32
        "",                     # 33 ImgPath
        "",                     # 34 SndPath
        1,                      # 35 iABorderStyle: Raised
        4,                      # 36 iABorderWidth
        20,                     # 37 iABorderShade
        rgb(40, 80, 160),       # 38 cABorderColor
        rgb(160, 190, 230),     # 39 cFadeColor
        2,                      # 40 iFadeStyle: Top <-> Bottom
        "Loading...",           # 41 sLoading
        rgb(0, 0, 255),         # 42 cLoadingFont
        rgb(255, 255, 255),     # 43 cLoadingBack
        10,                     # 44 iLoadingFont_Size
        1,                      # 45 iLoadingFont_Style
        0,                      # 46 iLoadingFont_Name
        1,                      # 47 iDescentX
        1,                      # 48 iDescentY
    ]


# --- Buttons ----------------------------------------------------------------

def tri(v):
    return [v, v, v]


def default_button():
    """The values of the built-in default button, as a dict of model fields."""
    return {
        "x": 0, "y": 0, "Width": 100, "Height": 40,
        "Label": tri(""), "URL": "", "Status": "", "Target": "_self",
        "noBackGround": tri(False), "ShowHand": True, "Image": tri(""),
        "BackColor": [8388608, 16711680, 16711680], "FontColor": tri(16777215),
        "Font": tri("arial"), "FontStyle": tri(1), "FontSize": tri(10),
        "Snd": tri(""), "ImgStyle": tri(0), "PositionText": tri(False),
        "LabelPosX": [24, 24, 25], "LabelPosY": [25, 25, 25], "Hidden": 0,
        "ProgramLEAVE": "", "ProgramOVER": "", "ProgramDOWN": "", "Tip": "",
        "BorderStyle": [1, 1, 2], "BorderWidth": tri(7), "BorderShade": tri(25),
        "BorderAutoColor": tri(True), "BorderColor": [8388608, 16711680, 16711680],
        "TFrameThick": tri(0), "TFrameColor": [32768, 8421504, 0],
        "TFrameLight": tri(False), "TFrameShade": tri(0),
        "TFrameLeftToRight": tri(False), "FadeColor": tri(65535),
        "FadeStyle": tri(0), "FrameColor": tri(255), "FrameThick": tri(0),
        "sBName": "UnNamed", "SoundStop": tri(False), "SoundLoop": tri(False),
        "ImgX": tri(0), "ImgY": tri(0), "Radio": False,
        "ProgramUP": "", "ProgramCHECK": "", "ProgramUNCHECK": "",
    }


def button_fields(b):
    """The 110 fields of a project button line, in the writer's forms."""
    f = [b["x"], b["y"], b["Width"], b["Height"]]
    f += [escape_field(s) for s in b["Label"]]
    f += [escape_field(b["URL"]), escape_field(b["Status"]), escape_field(b["Target"])]
    f.append(5)  # iBtnType: always 5 in a project file
    f.append("t" + "".join(str(s + 1) for s in range(3) if b["noBackGround"][s]))
    f.append(b01(b["ShowHand"]))
    f += b["Image"]
    f += b["BackColor"] + b["FontColor"] + b["Font"] + b["FontStyle"] + b["FontSize"]
    f += b["Snd"]
    f += b["ImgStyle"]
    f += [bool_as_int(v) for v in b["PositionText"]]
    for s in range(3):
        f += [b["LabelPosX"][s], b["LabelPosY"][s]]
    f += [b["Hidden"], b["ProgramLEAVE"], b["ProgramOVER"], b["ProgramDOWN"], b["Tip"]]
    f += b["BorderStyle"] + b["BorderWidth"] + b["BorderShade"]
    f += [b01(v) for v in b["BorderAutoColor"]]
    f += b["BorderColor"] + b["TFrameThick"] + b["TFrameColor"]
    f += [b01(v) for v in b["TFrameLight"]]
    f += b["TFrameShade"]
    f += [b01(v) for v in b["TFrameLeftToRight"]]
    f += b["FadeColor"] + b["FadeStyle"] + b["FrameColor"] + b["FrameThick"]
    f.append(escape_name_field(b["sBName"]))
    f += [b01(v) for v in b["SoundStop"]] + [b01(v) for v in b["SoundLoop"]]
    for s in range(3):
        f += [b["ImgX"][s], b["ImgY"][s]]
    f += [b01(b["Radio"]), b["ProgramUP"], b["ProgramCHECK"], b["ProgramUNCHECK"]]
    assert len(f) == 110, len(f)
    return f


COLS = [15, 125, 235, 345]
ROWS = [16, 76, 136]
W, H = 100, 48


def make_button(name, col, row, **changes):
    b = default_button()
    b.update(x=COLS[col], y=ROWS[row], Width=W, Height=H, sBName=name,
             Label=tri(name), Tip=name, LabelPosX=[24, 24, 25], LabelPosY=[25, 25, 25])
    for key, value in changes.items():
        if key not in b:
            raise KeyError(key)
        b[key] = value
    # The reader copies the face colour into an automatic border colour, so
    # the file says the same.
    for s in range(3):
        if b["BorderAutoColor"][s]:
            b["BorderColor"][s] = b["BackColor"][s]
    return b


def buttons():
    navy, blue, sky = rgb(0, 40, 110), rgb(20, 80, 170), rgb(0, 30, 80)
    white, yellow = rgb(255, 255, 255), rgb(255, 230, 0)
    return [
        # Top row: the four fades and the four border styles.
        make_button(
            "Home", 0, 0,
            Label=["Home", "Go Home", "Home!"],
            URL="index.html", Status="Back to the start page", Target="_self",
            Tip="Start page",
            BackColor=[navy, blue, sky], FadeColor=[rgb(90, 150, 230), rgb(140, 200, 255), rgb(60, 110, 190)],
            FadeStyle=tri(1), FontColor=[white, yellow, white],
            BorderStyle=[1, 1, 2], BorderWidth=[3, 3, 3], BorderShade=[25, 30, 25],
            Image=tri("demo_star.gif"), ImgStyle=tri(1), ImgX=[8, 8, 9], ImgY=[12, 12, 13],
            Snd=["", "", "click.au"],
            ProgramOVER="4 News 2 Latest&!0News;9 News 2 FFCC00;",
            ProgramDOWN="7 0 alert('Hello&!0from&!0Kestrel&!0Pane');",
        ),
        make_button(
            "News", 1, 0,
            Label=["News", "News | Events", "News"],
            URL="news.html", Status="What is new", Target="_self", Tip="Latest news",
            BackColor=[rgb(120, 20, 20), rgb(170, 40, 40), rgb(90, 10, 10)],
            FadeColor=tri(rgb(240, 140, 100)), FadeStyle=tri(2),
            FontColor=[white, yellow, white], Font=tri("times"), FontStyle=[1, 3, 1],
            FontSize=[11, 10, 11],
            BorderStyle=[2, 2, 1], BorderWidth=[2, 2, 2], BorderShade=[20, 20, 20],
            Snd=["", "", "click.au"],
            ProgramOVER="3 Search -999 -999 120+ -999 5 40;",
            ProgramLEAVE="3 Search -999 -999 100 -999 5 40;",
        ),
        make_button(
            "Products", 2, 0,
            Label=["Products", "Our Products", "Products"],
            URL="products.html", Status="Browse the catalogue", Target="_blank",
            Tip="Opens in a new window",
            BackColor=[rgb(0, 100, 40), rgb(0, 140, 60), rgb(0, 80, 30)],
            FadeColor=tri(rgb(170, 230, 120)), FadeStyle=tri(3),
            FontColor=[white, white, yellow],
            BorderStyle=[3, 3, 4], BorderWidth=[4, 4, 4], BorderShade=[15, 20, 15],
            Snd=["", "click.au", ""], SoundStop=[False, True, False],
            ProgramDOWN="2 Favorites;", ProgramUP="1 Favorites;",
        ),
        make_button(
            "About Us", 3, 0,
            Label=["About Us", "Who we are", "About Us"],
            URL="about.html", Status='Read the "About Us" page', Target="_self",
            Tip="Company profile",
            BackColor=[rgb(90, 40, 120), rgb(130, 60, 170), rgb(70, 30, 100)],
            FadeColor=tri(rgb(220, 180, 250)), FadeStyle=tri(4),
            FontColor=[white, yellow, white], Font=tri("courier"), FontStyle=[1, 1, 0],
            BorderStyle=[4, 4, 2], BorderWidth=[5, 5, 5], BorderShade=[10, 12, 10],
            ProgramOVER="5 Gallery 1 FF8000;", ProgramLEAVE="5 Gallery 1 336699;",
        ),
        # Middle row: frames, a two-line label, a transparent state.
        make_button(
            "Gallery", 0, 1,
            Label=["Gallery", "Gallery", "Gallery"],
            URL="gallery.html", Status="Pictures", Target="_blank", Tip="Photo gallery",
            BackColor=[rgb(51, 102, 153), rgb(70, 130, 190), rgb(40, 80, 120)],
            FontColor=[white, yellow, yellow],
            BorderStyle=tri(0), BorderWidth=tri(0), BorderShade=tri(20),
            FrameThick=[2, 3, 2], FrameColor=[rgb(255, 200, 0), rgb(255, 120, 0), rgb(200, 0, 0)],
        ),
        make_button(
            "Downloads", 1, 1,
            Label=["Downloads", "Get files", "Downloads"],
            URL="page1.html", Status="Files to download", Target="_self", Tip="Downloads",
            BackColor=[rgb(230, 230, 230), rgb(245, 245, 245), rgb(210, 210, 210)],
            FontColor=[rgb(0, 60, 0), rgb(0, 90, 0), rgb(0, 60, 0)], FontSize=tri(11),
            BorderStyle=[1, 1, 2], BorderWidth=[2, 2, 2], BorderShade=[40, 40, 40],
            TFrameThick=[2, 2, 1], TFrameColor=[rgb(120, 220, 120), rgb(180, 255, 160), rgb(120, 220, 120)],
            TFrameLight=[True, True, False], TFrameShade=[30, 30, 20],
            TFrameLeftToRight=[False, True, False],
        ),
        make_button(
            "Contact", 2, 1,
            Label=["Contact\\nUs", "Write\\nto us", "Contact\\nUs"],
            URL="contact.html", Status="How to reach us", Target="_self", Tip="Contact",
            BackColor=[rgb(180, 90, 0), rgb(220, 120, 0), rgb(150, 70, 0)],
            FadeColor=tri(rgb(255, 220, 150)), FadeStyle=[2, 2, 0],
            FontColor=tri(white), FontSize=tri(9),
            BorderStyle=[1, 1, 2], BorderWidth=[6, 6, 6], BorderShade=[8, 8, 8],
            TFrameThick=[1, 1, 1], TFrameColor=tri(rgb(80, 30, 0)), TFrameShade=tri(20),
            ProgramDOWN="6 250;8 Help 3;", ProgramUP="8 Help 1;",
        ),
        make_button(
            "Help", 3, 1,
            Label=["Help", "Help?", "Help!"],
            URL="help.html", Status="Questions and answers", Target="_blank", Tip="Help pages",
            noBackGround=[True, False, False],
            BackColor=[rgb(255, 255, 255), rgb(255, 250, 200), rgb(255, 240, 150)],
            FontColor=[navy, rgb(150, 0, 0), rgb(150, 0, 0)], FontStyle=[1, 1, 1],
            FontSize=[12, 12, 12],
            BorderStyle=[3, 1, 2], BorderWidth=[1, 2, 2], BorderShade=[30, 30, 30],
            BorderAutoColor=[False, True, True], BorderColor=[rgb(40, 80, 160), 0, 0],
            ProgramOVER="10 About&!0Us 3 120;",
        ),
        # Bottom row: a manual label, pictures, a radio button.
        make_button(
            "Search", 0, 2,
            Label=["Search", "Search...", "Search"],
            URL="search.html", Status="Search this site", Target="_self", Tip="Search",
            BackColor=[rgb(60, 60, 60), rgb(90, 90, 90), rgb(40, 40, 40)],
            FadeColor=tri(rgb(170, 170, 170)), FadeStyle=tri(2),
            FontColor=[white, yellow, white],
            PositionText=tri(True), LabelPosX=[12, 12, 13], LabelPosY=[30, 30, 31],
            Image=tri("demo_arrow.gif"), ImgStyle=tri(1), ImgX=[62, 64, 63], ImgY=[16, 16, 17],
            BorderStyle=[1, 1, 2], BorderWidth=tri(2), BorderShade=tri(30),
        ),
        make_button(
            "Favorites", 1, 2,
            Label=tri(""),
            URL="favorites.html", Status="Our favourite sites", Target="_self",
            Tip="Favorites",
            BackColor=[rgb(0, 70, 90), rgb(0, 100, 130), rgb(0, 55, 70)],
            FadeColor=tri(rgb(120, 200, 220)), FadeStyle=tri(4),
            Image=tri("demo_star.gif"), ImgStyle=tri(0),
            BorderStyle=[1, 1, 2], BorderWidth=tri(3), BorderShade=tri(20),
        ),
        make_button(
            "Links", 2, 2,
            Label=["Links", "Links", "Links on"],
            URL="links.html", Status="Other sites", Target="_blank", Tip="Links (radio)",
            BackColor=[rgb(100, 100, 0), rgb(140, 140, 0), rgb(70, 70, 0)],
            FontColor=[white, white, yellow],
            BorderStyle=[1, 1, 2], BorderWidth=tri(3), BorderShade=tri(25),
            Radio=True,
            ProgramCHECK="4 Links 1 Checked;5 Links 1 556B2F;",
            ProgramUNCHECK="4 Links 1 Links;5 Links 1 646400;",
        ),
        make_button(
            "Next", 3, 2,
            Label=["Next", "Next page", "Next"],
            URL="page2.html", Status="Next page", Target="_self", Tip="Go on",
            BackColor=[rgb(200, 210, 230), rgb(220, 230, 250), rgb(180, 190, 210)],
            FontColor=tri(navy), FontStyle=tri(3),
            Image=tri("demo_arrow.gif"), ImgStyle=tri(2),
            BorderStyle=[1, 1, 2], BorderWidth=tri(2), BorderShade=tri(20),
            Snd=["", "", "click.au"], SoundStop=[False, False, True],
            ProgramDOWN="9 Next 3 000080;",
        ),
    ]


# --- The project file -------------------------------------------------------

HTML_BEFORE = CRLF.join([
    "<Html>",
    "<Head><Title>Kestrel Pane Demo</Title></Head>",
    '<Body bgcolor="#FFFFFF">',
    "<Center>",
    "<H2>Kestrel Pane Demo</H2>",
])
HTML_ALT = "<b>Java is disabled in your Browser!</b>"
HTML_AFTER = CRLF.join(["<P>Made with Kestrel Pane</P>", "</Center>", "</Body>", "</Html>"])


def block(name, text):
    if not text:
        return ""
    return "[Start: %s]%s%s%s[End: %s]%s" % (name, CRLF, text, CRLF, name, CRLF)


def project_text():
    btns = buttons()
    for b in btns:
        for key in ("ProgramUP", "ProgramOVER", "ProgramLEAVE", "ProgramDOWN",
                    "ProgramCHECK", "ProgramUNCHECK", "Tip"):
            assert "|" not in b[key] and "\r" not in b[key] and "\n" not in b[key], b["sBName"]
    applet = applet_fields(len(btns))
    assert len(applet) == 49
    out = "KestrelPane Project 2.02" + CRLF
    out += line_of(applet) + CRLF
    for b in btns:
        out += line_of(button_fields(b)) + CRLF
    out += CRLF
    out += block("sHTMLbefore", HTML_BEFORE)
    out += block("sHTMLalt", HTML_ALT)
    out += block("sHTMLafter", HTML_AFTER)
    out += CRLF
    settings = ["demo.html", "", "", "", "", "", ""]
    out += "[Start: kpProjectSettings]" + CRLF
    out += "".join(line + CRLF for line in settings)
    out += "[End: kpProjectSettings]" + CRLF + CRLF
    return out


# --- Media ------------------------------------------------------------------

def convert(*args):
    subprocess.run([CONVERT, *args], check=True)


def star_points(cx, cy, outer, inner, n=5):
    pts = []
    for k in range(2 * n):
        r = outer if k % 2 == 0 else inner
        a = math.pi / n * k - math.pi / 2
        pts.append("%d,%d" % (round(cx + r * math.cos(a)), round(cy + r * math.sin(a))))
    return " ".join(pts)


def draw_pictures(projects, samples):
    # -strip keeps time stamps and profiles out, so the files are the same
    # from run to run.
    convert("-size", "24x24", "xc:none", "-fill", "gold", "-stroke", "darkorange",
            "-draw", "polygon " + star_points(11.5, 12.5, 11, 4.5),
            "-strip", os.path.join(projects, "demo_star.gif"))
    convert("-size", "32x16", "xc:none", "-fill", "white", "-stroke", "navy",
            "-draw", "polygon 1,5 18,5 18,1 30,8 18,14 18,10 1,10",
            "-strip", os.path.join(projects, "demo_arrow.gif"))
    convert("-size", "64x64", "gradient:#F4F8FF-#C8D8F0",
            "-fill", "#DCE6F8", "-draw", "circle 32,32 32,40",
            "-strip", "-quality", "90", os.path.join(projects, "demo_bg.jpg"))
    convert("-size", "32x32", "xc:none", "-fill", "red", "-stroke", "maroon",
            "-draw", "circle 15.5,15.5 15.5,2", "-strip",
            os.path.join(samples, "sample_ball.gif"))
    convert("-size", "32x32", "xc:none", "-fill", "royalblue", "-stroke", "navy",
            "-draw", "rectangle 3,3 28,28", "-strip",
            os.path.join(samples, "sample_square.gif"))


def tone(seconds, freq, rate=8000, volume=0.6):
    """Signed samples in -1..1 with a short fade in and out against clicks."""
    n = int(seconds * rate)
    ramp = max(1, n // 10)
    out = []
    for i in range(n):
        env = min(1.0, i / ramp, (n - 1 - i) / ramp)
        out.append(volume * env * math.sin(2 * math.pi * freq * i / rate))
    return out


def write_au(path, samples, rate=8000):
    # Sun AU: big-endian header, encoding 2 is 8-bit linear PCM (signed).
    data = bytes(max(-128, min(127, round(s * 127))) & 0xFF for s in samples)
    header = struct.pack(">4sIIIII", b".snd", 24, len(data), 2, rate, 1)
    with open(path, "wb") as f:
        f.write(header + data)


def write_wav(path, samples, rate=8000):
    # 8-bit WAVE is unsigned, centred on 128.
    data = bytes(max(0, min(255, 128 + round(s * 127))) for s in samples)
    with wave.open(path, "wb") as w:
        w.setnchannels(1)
        w.setsampwidth(1)
        w.setframerate(rate)
        w.writeframes(data)


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    ap.add_argument("--root", default=os.path.dirname(here),
                    help="repository root; files go to ROOT/data")
    args = ap.parse_args()

    data = os.path.join(args.root, "data")
    projects = os.path.join(data, "Projects")
    samples = os.path.join(data, "Samples")
    sounds = os.path.join(data, "Sounds")
    for d in (projects, samples, sounds):
        os.makedirs(d, exist_ok=True)

    if not os.path.exists(CONVERT):
        sys.exit("make_demo.py: %s not found (ImageMagick is needed)" % CONVERT)
    draw_pictures(projects, samples)
    write_au(os.path.join(projects, "click.au"), tone(0.1, 1200))
    beep = tone(0.25, 880)
    write_au(os.path.join(sounds, "beep.au"), beep)
    write_wav(os.path.join(sounds, "beep.wav"), beep)

    # The system's 8-bit code page; the demo itself is plain ASCII.
    with open(os.path.join(projects, "Demo.kpn"), "wb") as f:
        f.write(project_text().encode("cp1252"))
    print("wrote", data)


if __name__ == "__main__":
    main()
