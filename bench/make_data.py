#!/usr/bin/env python3
"""Makes the files that the benchmarks work on in the folder given: the same bytes every time."""
import hashlib
import pathlib
import random
import sys
import zipfile

WORDS = """beam tower bridge girder column plate weld bolt span load arch truss joint frame panel
anchor cable deck pier strut brace ridge gable lintel""".split()


def prose(rng, size):
    """Lines of words and numbers, which deflate as texts do."""
    lines, length = [], 0
    while length < size:
        line = " ".join(rng.choice(WORDS) for _ in range(rng.randint(4, 12)))
        line += f" {rng.randrange(10**6)}\n"
        lines.append(line)
        length += len(line)
    return "".join(lines).encode()[:size]


def archive(path, entries):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as target:
        for name, data in entries:
            target.writestr(zipfile.ZipInfo(name, (2026, 5, 17, 12, 30, 8)), data,
                            zipfile.ZIP_DEFLATED)


def small_files(rng, count):
    texts = [prose(rng, rng.randint(100, 900)) for _ in range(500)]
    for i in range(count):
        yield f"parts/{i // 1000:03}/{rng.choice(WORDS)}-{i:05}.txt", texts[i % len(texts)]


def rtf(rng, size):
    """A document as word processors write it: fonts, paragraphs, formatting, accents, a table."""
    parts = [r"{\rtf1\ansi\ansicpg1252\deff0{\fonttbl{\f0\froman Times New Roman;}"
             r"{\f1\fswiss Arial;}}{\colortbl;\red255\green0\blue0;\red0\green0\blue255;}"
             "\n{\\*\\generator Bench;}\\viewkind4\\uc1\n"]
    length = 0
    while length < size:
        words = [rng.choice(WORDS) for _ in range(rng.randint(20, 80))]
        words[3] = rf"{{\b {words[3]}}}"
        words[7] = rf"{{\i\cf1 {words[7]}}}"
        words[11] = r"caf\'e9 \u8364?"
        part = rf"\pard\plain\f{rng.randrange(2)}\fs22 " + " ".join(words) + "\\par\n"
        if rng.randrange(20) == 0:
            cells = "".join(rf"\intbl {rng.choice(WORDS)}\cell" for _ in range(3))
            part += rf"\trowd\cellx1000\cellx2000\cellx3000 {cells}\row\pard" + "\n"
        parts.append(part)
        length += len(part)
    parts.append("}")
    return "".join(parts).encode()


def ini(sections, keys):
    lines = []
    for section in range(sections):
        lines.append(f"[section{section}]\n")
        lines.extend(f"key{key}=value {section} of {key}\n" for key in range(keys))
        lines.append("\n")
    return "".join(lines).encode()


def statements(rng, size):
    """Keywords between other words and delimiters, for the scanner."""
    keywords = "select from where and or order group insert update delete".split()
    parts, length = [], 0
    while length < size:
        word = rng.choice(keywords) if rng.randrange(4) == 0 else rng.choice(WORDS)
        part = word + rng.choice([" ", " ", " ", "\n", " = ", " (", ") ", ", "])
        parts.append(part)
        length += len(part)
    return "".join(parts).encode()[:size]


def source(size):
    """Lines of a program with a conditional region every ten lines, for the preprocessor."""
    parts, length, line = [], 0, 0
    while length < size:
        part = f"int value_{line} = call(argument, 42);\n"
        if line % 10 == 0:
            part = "#ifdef FEATURE\n" + part
        if line % 10 == 9:
            part += "#endif\n"
        parts.append(part)
        length += len(part)
        line += 1
    parts.append("#endif\n" if line % 10 else "")
    return "".join(parts).encode()


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    done = folder / "done"
    version = hashlib.sha256(pathlib.Path(__file__).read_bytes()).hexdigest()
    if done.exists() and done.read_text() == version:
        return
    rng = random.Random(8)
    for count in (6000, 20000, 60000):
        archive(folder / f"small_{count}.zip", small_files(rng, count))
    block = prose(rng, 4 << 20)
    archive(folder / "inflate_200m.zip", [("large.txt", block * 50)])
    (folder / "document_8m.rtf").write_bytes(rtf(rng, 8 << 20))
    (folder / "settings_10k.ini").write_bytes(ini(100, 100))
    (folder / "settings_1k.ini").write_bytes(ini(10, 100))
    lines = block.replace(b"\n", b"\r\n")[:(1 << 20) - 2] + b"\r\n"
    (folder / "lines_64m.txt").write_bytes(lines * 64)
    (folder / "source_50m.txt").write_bytes(source(50 << 20))
    for name, size in (("1m", 1 << 20), ("4m", 4 << 20), ("16m", 16 << 20)):
        (folder / f"scan_{name}.txt").write_bytes(statements(rng, size))
    done.write_text(version)


if __name__ == "__main__":
    main()
