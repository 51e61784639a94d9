"""What scripts/site does."""
import argparse, html, json, os, re, shutil, subprocess, sys, tempfile
import xml.etree.ElementTree as ElementTree
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urlsplit

parts = Path(__file__).resolve().parent
root = parts.parent.parent
template = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title}</title>
<link rel="icon" href="data:,">
<link rel="stylesheet" href="{up}style.css">
</head>
<body>
<header>
<a class="home" href="{up}index.html">Kobaltrix</a>
<a class="to-pages" href="#_pages">Pages</a>
<a href="{up}docs/gallery.html">Examples</a>
<a href="{up}reference/index.html">Reference</a>
<form action="{up}search.html"><input type="search" name="q" placeholder="Search" aria-label="Search"></form>
</header>
<div class="columns">
<nav id="_pages" aria-label="Pages">
{pages}</nav>
<main>
{content}</main>
</div>
</body>
</html>
"""


def address(path):
    """Where a file of the project is in the site."""
    if path.name == "README.md":
        return path.with_name("index.html")
    if path.suffix == ".md":
        return path.with_suffix(".html")
    if (root / path).is_dir():
        return path / "index.html"
    return path if is_binary(path) else path.with_name(path.name + ".html")


def is_binary(path):
    """Whether the site has the file as it is: pictures, sounds. Others are shown as text."""
    try:
        return path.suffix == ".svg" or b"\0" in (root / path).read_bytes()[:4096]
    except OSError:
        return False


class Pages:
    """All that is to be in the site: what was asked for, and what that leads to."""

    def __init__(self, folder):
        self.folder, self.waiting, self.seen, self.sections = folder, [], set(), []

    def add(self, path):
        if path not in self.seen:
            self.seen.add(path)
            self.waiting.append(path)

    def link(self, target, page):
        """What a page's link becomes, when it leads to a file of the project."""
        to = urlsplit(target)
        if to.scheme or to.netloc or not to.path:
            return target
        path = Path(os.path.normpath(page.parent / unquote(to.path)))
        if not (root / path).exists() or ".." in path.parts:
            return target  # found by the check
        self.add(path)
        place = os.path.relpath(address(path), address(page).parent)
        return place + ("#" + to.fragment if to.fragment else "")

    def write(self, page, title, content):
        file = self.folder / page
        file.parent.mkdir(parents=True, exist_ok=True)
        up = "../" * (len(page.parts) - 1)
        file.write_text(template.format(title=html.escape(title), up=up, pages=self.beside(page), content=content))

    def beside(self, page):
        lines = []
        for title, pages in self.groups:
            lines.append(f"<h2>{title}</h2>\n" * bool(title) + "<ul>\n")
            for path, name in pages:
                here = ' aria-current="page"' if address(path) == page else ""
                place = os.path.relpath(address(path), page.parent)
                lines.append(f'<li><a href="{place}"{here}>{html.escape(name)}</a></li>\n')
            lines.append("</ul>\n")
        return "".join(lines)

    def make_all(self):
        self.groups = groups()
        for _, pages in self.groups:
            for path, _ in pages:
                self.add(path)
        while self.waiting:
            path = self.waiting.pop()
            if path.suffix == ".md":
                self.markdown(path)
            elif (root / path).is_dir():
                self.listing(path)
            elif is_binary(path):
                (self.folder / path).parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(root / path, self.folder / path)
            else:
                text = html.escape((root / path).read_text())
                self.write(address(path), path.name,
                           f'<h1>{path.name}</h1>\n<p class="place">{path}</p>\n<pre><code>{text}</code></pre>\n')

    def listing(self, path):
        if (root / path / "README.md").exists():
            self.add(path / "README.md")
            return
        lines = []
        for entry in sorted((root / path).iterdir()):
            inside = path / entry.name
            if not entry.name.startswith("."):
                self.add(inside)
                place = os.path.relpath(address(inside), path)
                lines.append(f'<li><a href="{place}">{entry.name}{"/" * entry.is_dir()}</a></li>\n')
        self.write(address(path), path.name, f"<h1>{path.name}</h1>\n<ul>\n{''.join(lines)}</ul>\n")

    def markdown(self, page):
        tokens = parse((root / page).read_text())
        title, slugs, contents, texts = str(page), {}, [], []
        for at, token in enumerate(tokens):
            if token.type == "heading_open":
                heading = text_of(tokens[at + 1])
                slug = slug_of(heading)
                slugs[slug] = slugs.get(slug, -1) + 1
                slug += f"-{slugs[slug]}" * (slugs[slug] > 0)
                token.attrSet("id", slug)
                if token.tag == "h1":
                    title = heading
                elif token.tag == "h2":
                    contents.append((slug, heading))
                texts.append((slug, heading, []))
            elif token.type == "inline":
                for child in token.children:
                    for attribute in "href", "src":
                        if child.attrGet(attribute):
                            child.attrSet(attribute, self.link(child.attrGet(attribute), page))
            if texts and (token.type in ("inline", "fence", "code_block")) and tokens[at - 1].type != "heading_open":
                texts[-1][2].append(text_of(token))
        content = renderer.renderer.render(tokens, renderer.options, {})
        if len(contents) > 2 and page.name != "README.md":
            items = "".join(f'<li><a href="#{slug}">{html.escape(heading)}</a></li>\n' for slug, heading in contents)
            contents = f'<details class="contents"><summary>On this page</summary>\n<ul>\n{items}</ul>\n</details>\n'
            content = content.replace("</h1>\n", "</h1>\n" + contents, 1)
        if page == Path("README.md"):
            content = content.replace("<h2", self.examples() + "<h2", 1)
        content += self.next_page(page)
        self.write(address(page), title if title == "Kobaltrix" else f"{title} – Kobaltrix", content)
        for slug, heading, text in texts:
            self.sections.append([f"{address(page)}#{slug}", title, heading, re.sub(r"\s+", " ", " ".join(text))])

    def next_page(self, page):
        order = [path for _, pages in self.groups[:-1] for path, _ in pages]
        if page not in order[:-1]:
            return ""
        following = order[order.index(page) + 1]
        place = os.path.relpath(address(following), address(page).parent)
        return f'<p class="next">Next: <a href="{place}">{html.escape(title_of(following))}</a></p>\n'

    def examples(self):
        """All pictures of the gallery, small, for the first page."""
        gallery = Path("docs/gallery.md")
        lines = []
        for token in parse((root / gallery).read_text()):
            for child in token.children or []:
                if child.type == "image":
                    path = Path(os.path.normpath(gallery.parent / child.attrGet("src")))
                    self.add(path)
                    name = html.escape(child.content)
                    lines.append(f'<a href="{address(gallery)}">'
                                 f'<img src="{path}" alt="{name}" title="{name}" loading="lazy"></a>\n')
        return f'<div class="examples">\n{"".join(lines)}</div>\n'

    def search(self, names):
        for name in "style.css", "search.js":
            shutil.copyfile(parts / name, self.folder / name)
        index = self.sections + names
        script = "const sections = " + json.dumps(index, ensure_ascii=False) + ";\n"
        (self.folder / "search-index.js").write_text(script)
        self.write(Path("search.html"), "Search – Kobaltrix",
                   '<h1>Search</h1>\n<p id="found">The search needs scripts.</p>\n<ol id="results"></ol>\n'
                   '<script src="search-index.js"></script>\n<script src="search.js"></script>\n')


def renderer_of_pages():
    from markdown_it import MarkdownIt

    markdown = MarkdownIt("commonmark", {"xhtmlOut": False}).enable("table")
    # A wide table is scrolled by itself, not the page with it.
    markdown.add_render_rule("table_open", lambda self, tokens, at, options, env:
                             '<div class="table">' + self.renderToken(tokens, at, options, env))
    markdown.add_render_rule("table_close", lambda self, tokens, at, options, env: "</table></div>\n")
    return markdown


def parse(text):
    """The tokens of a page. A table without a head holds pictures, and is laid out as there is room."""
    tokens = renderer.parse(text)
    at = 0
    while at < len(tokens):
        if tokens[at].type == "thead_open":
            end = next(i for i in range(at, len(tokens)) if tokens[i].type == "thead_close")
            if not any(text_of(token) for token in tokens[at:end]):
                tokens[at - 1].attrSet("class", "pictures")
                del tokens[at:end + 1]
        at += 1
    return tokens


def text_of(token):
    if token.children is None:
        return token.content
    return "".join(" " if child.type in ("softbreak", "hardbreak") else text_of(child) for child in token.children
                   if child.type != "html_inline")


def slug_of(heading):
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


def title_of(path):
    for line in (root / path).read_text().splitlines():
        if line.startswith("# "):
            return line[2:].replace("`", "")
    return str(path)


def groups():
    """The pages, in the groups and in the order of README.md; those that it does not list stand in the last one."""
    tokens = parse((root / "README.md").read_text())
    found, title, listed = [], "", {Path("README.md")}
    for at, token in enumerate(tokens):
        if token.type == "paragraph_open" and token.level == 0 and text_of(tokens[at + 1]).endswith(":"):
            title = text_of(tokens[at + 1])[:-1]
        if token.type == "bullet_list_open" and token.level == 0 and title:
            found.append((title, []))
        if token.type == "inline" and token.level == 3 and found:
            for child in token.children:
                path = Path(urlsplit(child.attrGet("href") or "").path)
                is_page = child.type == "link_open" and path.suffix == ".md" and (root / path).is_file()
                if is_page and path not in listed:
                    found[-1][1].append((path, title_of(path)))
                    listed.add(path)
    patterns = "*.md", "docs/**/*.md", "template/*.md"
    every = [path.relative_to(root) for pattern in patterns for path in root.glob(pattern)]
    rest = sorted((path for path in every if path not in listed), key=title_of)
    return [("", [(Path("README.md"), "Kobaltrix")])] + found + [("More", [(path, title_of(path)) for path in rest])]


def make_reference(folder):
    """By Doxygen; returns the names in it, for the search."""
    with tempfile.TemporaryDirectory() as scratch:
        layout, names = Path(scratch, "layout.xml"), Path(scratch, "names.xml")
        subprocess.run(["doxygen", "-l", layout], check=True, stdout=subprocess.DEVNULL)
        back = '<tab type="user" url="../index.html" title="Pages"/>'
        layout.write_text(layout.read_text().replace("<navindex>", "<navindex>" + back))
        settings = (root / "docs/Doxyfile").read_text()
        settings += f'OUTPUT_DIRECTORY = "{folder}"\nLAYOUT_FILE = "{layout}"\nGENERATE_TAGFILE = "{names}"\n'
        if subprocess.run(["doxygen", "-"], input=settings, text=True, cwd=root).returncode:
            sys.exit("The reference cannot be made.")
        found = {}
        for compound in ElementTree.parse(names).getroot().iter("compound"):
            if compound.get("kind") in ("class", "struct", "union"):
                found[compound.findtext("name")] = compound.findtext("filename")
            for member in compound.findall("member"):
                inside = compound.findtext("name") + "::" if compound.get("kind") in ("class", "struct") else ""
                place = f"{member.findtext('anchorfile')}#{member.findtext('anchor')}"
                found.setdefault(inside + member.findtext("name"), place)
        return [["reference/" + place, "Reference", name, ""] for name, place in found.items()]


class Checked(HTMLParser):
    """What one page links to, and what is wrong with its HTML."""

    void = {"meta", "link", "img", "br", "hr", "input"}

    def __init__(self, file):
        super().__init__()
        self.ids, self.links, self.open, self.faults = set(), [], [], []
        self.feed(file.read_text())
        self.faults += [f"<{tag}> is not closed" for tag in self.open]

    def handle_starttag(self, tag, attributes):
        if tag not in self.void:
            self.open.append(tag)
        for name, value in attributes:
            if name == "id":
                if value in self.ids:
                    self.faults.append(f"id {value} twice")
                self.ids.add(value)
            elif name in ("href", "src", "action"):
                self.links.append(value or "")
        if tag == "img" and not dict(attributes).get("alt"):
            self.faults.append(f"no text for the picture {dict(attributes).get('src')}")

    def handle_endtag(self, tag):
        if tag not in self.open:
            self.faults.append(f"</{tag}> closes nothing")
            return
        while (last := self.open.pop()) != tag:
            self.faults.append(f"<{last}> is not closed before </{tag}>")


def check(folder):
    """What is wrong with a site. Doxygen's pages are only looked at where ours lead there."""
    pages = {file: Checked(file) for file in folder.rglob("*.html") if folder / "reference" not in file.parents}
    faults = []
    for file, page in pages.items():
        faults += [f"{file.relative_to(folder)}: {fault}" for fault in page.faults]
        for link in page.links:
            to = urlsplit(link)
            if to.scheme:
                continue
            target = (file.parent / unquote(to.path)).resolve() if to.path else file
            if not target.is_file() or folder not in target.parents or \
                    to.fragment and to.fragment not in (pages[target] if target in pages else Checked(target)).ids:
                faults.append(f"{file.relative_to(folder)}: {link} leads nowhere")
    if len(pages) < 10:
        faults.append(f"only {len(pages)} pages in {folder}")
    return faults


def chromium(page, *options):
    """Opens a page of its own, in which frames show those of the site, and returns what it says."""
    with tempfile.TemporaryDirectory() as scratch:
        file = Path(scratch, "page.html")
        file.write_text(page)
        command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
                   "--allow-file-access-from-files", "--disable-web-security", f"--user-data-dir={scratch}",
                   *options, f"file://{file}"]
        return subprocess.run(command, check=True, text=True, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout


def too_wide(folder):
    """The pages that a phone would have to scroll sideways."""
    pages = [f"file://{page}" for page in sorted(folder.rglob("*.html")) if "search" not in page.parts]
    told = chromium("""<iframe id="shown" style="width:390px;height:800px;border:0"></iframe><pre id="told"></pre><script>
        const pages = %s, wide = [];
        let next = 0;
        shown.onload = () => {
            const root = shown.contentDocument.documentElement;
            if (root.scrollWidth > 390) wide.push(pages[next - 1] + " is wider than a phone");
            if (next < pages.length) shown.src = pages[next++];
            else told.textContent = "told:" + wide.join("\\n") + ":told";
        };
        shown.src = "about:blank";
        </script>""" % json.dumps(pages), "--dump-dom", f"--virtual-time-budget={1000 * len(pages)}")
    found = re.search(r"told:([^+]*?):told</pre>", told)
    return found.group(1).split("\n") if found else ["Chromium has not looked at all pages"]


def look(folder):
    """Pictures of some pages as a phone and a desktop show them, in light and dark."""
    pictures = root / "build/site-pictures"
    shutil.rmtree(pictures, ignore_errors=True)
    pictures.mkdir(parents=True)
    shown = ["index", "docs/gallery", "docs/tutorial", "docs/input", "search.html?q=sprite", "reference/index",
             "reference/classKXWindow"]
    for page in shown:
        place = f"file://{folder}/{page}" + ".html" * ("?" not in page)
        name = re.sub(r"\W+", "-", page)
        for kind, width, height, dark in ("phone", 390, 2400, False), ("desktop", 1280, 1600, False), ("dark", 1280, 1000, True):
            # A window of Chromium is no narrower than 500 points: a frame in it can be.
            size = f"width:{width}px;height:{height}px"
            frame = f'<body style="margin:0"><iframe src="{html.escape(place)}" style="border:0;{size}">'
            chromium(frame, "--virtual-time-budget=3000", f"--window-size={max(width, 500)},{height}",
                     f"--screenshot={pictures}/{name}-{kind}.png", *["--blink-settings=preferredColorScheme=0"] * dark)
    print(f"Look at the pictures in {pictures}.")


arguments = argparse.ArgumentParser(prog="scripts/site")
arguments.add_argument("--check", action="store_true", help="only say what is wrong in the site that the folder holds")
arguments.add_argument("--look", action="store_true", help="make pictures of the site, too, in build/site-pictures")
arguments.add_argument("folder", type=Path, nargs="?", default=root / "build/site", help="instead of build/site")
options = arguments.parse_args()
folder = options.folder.resolve()
if not options.check:
    renderer = renderer_of_pages()
    if folder.exists() and any(folder.iterdir()) and not (folder / "search-index.js").exists():
        sys.exit(f"{folder} holds something else.")
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    names = make_reference(folder)
    site = Pages(folder)
    site.make_all()
    site.search(names)
faults = check(folder)
if faults:
    sys.exit("\n".join(faults))
if options.look:
    look(folder)
    if wide := [fault for fault in too_wide(folder) if fault]:
        sys.exit("\n".join(wide))
elif not options.check:
    print(f"Open {folder}/index.html in a browser.")
