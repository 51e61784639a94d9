// Finds the sections that hold all words of a question; those that have them in their heading come first.
const question = new URLSearchParams(location.search).get("q") || "";
const words = question.toLowerCase().split(/\s+/).filter(Boolean);
document.querySelector("input").value = question;

// Names of the reference, which have no text, come behind headings unless they are what was typed.
function rank(heading, text) {
    let points = 0;
    for (const word of words) {
        const inHeading = heading.includes(word);
        if (!inHeading && !text.includes(word)) return 0;
        if (heading.split("::").pop() === word) points += 20;
        else if (inHeading) points += (text ? 10 : 4) - Math.min(3, (heading.length - word.length) / 8);
        else points += 1;
    }
    return points;
}

// Some of a text around the first word, with all words marked.
function excerpt(text) {
    const at = Math.max(0, Math.min(...words.map(word => text.toLowerCase().indexOf(word)).filter(at => at >= 0)) - 60);
    const part = document.createElement("p");
    const pattern = new RegExp("(" + words.map(word => word.replace(/[^\w]/g, "\\$&")).join("|") + ")", "gi");
    const from = Number.isFinite(at) && at > 0 ? text.indexOf(" ", at) + 1 : 0;
    const cut = text.slice(from, text.indexOf(" ", from + 200) < 0 ? undefined : text.indexOf(" ", from + 200));
    for (const piece of cut.split(pattern)) {
        const matches = words.includes(piece.toLowerCase());
        part.append(matches ? Object.assign(document.createElement("mark"), { textContent: piece }) : piece);
    }
    return part;
}

const found = !words.length ? [] : sections
    .map(([place, page, heading, text]) => ({ place, page, heading, text, points: rank(heading.toLowerCase(), text.toLowerCase()) }))
    .filter(section => section.points)
    .sort((a, b) => b.points - a.points);
document.getElementById("found").textContent =
    !words.length ? "All pages and the reference." : `${found.length} places with “${question}”` + (found.length > 60 ? ", the first 60:" : "");
for (const { place, page, heading, text } of found.slice(0, 60)) {
    const link = Object.assign(document.createElement("a"), { href: place, textContent: heading });
    const item = document.createElement("li");
    item.append(link, page === heading ? "" : ` · ${page}`);
    if (text) item.append(excerpt(text));
    document.getElementById("results").append(item);
}
