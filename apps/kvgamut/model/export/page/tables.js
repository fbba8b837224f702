// SPDX-License-Identifier: Apache-2.0

// The numbers, and the texts about the gamuts. Names come from files: they are only ever set as text.

/** An element; properties with a hyphen, and "role", are set as attributes. */
function element(tag, properties = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(properties))
        if (name.includes("-") || name === "role")
            made.setAttribute(name, value);
        else
            made[name] = value;
    made.append(...children);
    return made;
}

/** A name from a file; its direction does not change that of the text around it. */
function nameElement(gamut) {
    return element("bdi", { textContent: gamut.name, className: "name" });
}

function keyElement(gamut) {
    const key = element("span", { className: "key" });
    key.style.backgroundColor = cssColour(keyColour(gamut));
    key.dataset.gamut = gamut.name;
    return key;
}

/** With as many decimals as the uncertainty allows; at least one digit of the uncertainty is shown. */
function volumeText(gamut) {
    const decimals = gamut.uncertainty >= 1 || gamut.uncertainty === 0 ? 0 : 1;
    const shown = (value) => value.toLocaleString("en-US",
        { minimumFractionDigits: decimals, maximumFractionDigits: decimals });
    return `${shown(gamut.volume)} ± ${gamut.uncertainty > 0 ? shown(Math.max(gamut.uncertainty, 0.1)) : "0"}`;
}

/** A coverage with its uncertainty; "unknown" if it could not be computed. */
function percent(covered) {
    const shown = (share) => (100 * share).toLocaleString("en-US",
        { minimumFractionDigits: 2, maximumFractionDigits: 2 });
    return covered ? `${shown(covered.share)} ± ${shown(covered.uncertainty)} %` : "unknown";
}

function labText(lab) {
    return lab.map((v) => (Math.round(10 * v) / 10 + 0).toFixed(1).replace("-", "\u2212")).join("  ");
}

function tableElement(caption, head, rows) {
    const cell = (tag, content, properties) => element(tag, properties, content);
    return element("div", { className: "scroll", tabIndex: 0, role: "region", "aria-label": caption },
        element("table", {},
            element("caption", { textContent: caption }),
            element("thead", {}, element("tr", {}, ...head.map((text) => cell("th", text, { scope: "col" })))),
            element("tbody", {}, ...rows.map(([first, ...others]) => element("tr", {},
                cell("th", first, { scope: "row" }), ...others.map((text) => cell("td", text, {})))))));
}

function nameCell(gamut) {
    const cell = element("span", {}, keyElement(gamut), " ", nameElement(gamut));
    if (gamut.description && gamut.description !== gamut.name)
        cell.append(element("bdi", { textContent: gamut.description, className: "note" }));
    return cell;
}

function volumeTable(gamuts) {
    const rows = gamuts.map((gamut) => [nameCell(gamut), volumeText(gamut), gamut.intent, gamut.bpc ? "yes" : "no",
                                        labText(gamut.white), labText(gamut.black)]);
    return tableElement("Volumes and white points",
        ["Gamut", "Volume, ΔE³", "Rendering intent", "Black point compensation", "White L*\u00a0a*\u00a0b*", "Black L*\u00a0a*\u00a0b*"], rows);
}

function coverageTable(gamuts, coverage) {
    const rows = gamuts.map((gamut, i) => [nameCell(gamut), ...gamuts.map((other, j) =>
        (i === j ? "–" : percent(coverage[i][j])))]);
    return tableElement("Coverage: the share of each row’s volume that the gamut of the column covers",
        ["Gamut", ...gamuts.map((gamut) => element("span", {}, "by ", nameElement(gamut)))], rows);
}

/** "A, B and C". */
function nameList(gamuts) {
    const separator = (i) => (i === 0 ? "" : i === gamuts.length - 1 ? " and " : ", ");
    return gamuts.flatMap((gamut, i) => [separator(i), nameElement(gamut)]);
}

/** What a reader sees in the 3D view, in words. */
function descriptionOf(data) {
    const bodies = data.gamuts.map((gamut) => `${gamut.name}, volume ${volumeText(gamut)} cubed delta E`);
    const covered = data.gamuts.flatMap((gamut, i) => data.gamuts.map((other, j) => (i === j ? "" :
        `${other.name} covers ${percent(data.coverage[i][j])} of ${gamut.name}.`))).filter((text) => text);
    return [`Solids in L*a*b*: ${bodies.join("; ")}.`, ...covered].join(" ");
}

function showTexts(data) {
    const intents = [...new Set(data.gamuts.map((gamut) => gamut.intent))];
    const text = (id, value) => { document.getElementById(id).textContent = value; };
    document.getElementById("title").append(`${data.gamuts.length > 1 ? "Gamuts" : "Gamut"} of `, ...nameList(data.gamuts));
    text("subtitle", `CIE L*a*b* (D50) · ${intents.join(", ")} rendering intent`);
    text("description", descriptionOf(data));
    const error = Math.max(...data.gamuts.map((gamut) => gamut.surface.error));
    text("provenance", `Made by ${data.program}. The surfaces are stored to within ${error.toFixed(4)} ΔE. ` +
        "The page is complete in itself: it loads nothing from a network.");
}

function showTables(data) {
    const tables = document.getElementById("tables");
    tables.append(volumeTable(data.gamuts));
    if (data.gamuts.length > 1)
        tables.append(coverageTable(data.gamuts, data.coverage));
    const notes = data.gamuts.flatMap((gamut) => gamut.notes.map((note) =>
        element("li", {}, nameElement(gamut), `: ${note}`)));
    if (notes.length > 0)
        tables.append(element("ul", { className: "notes" }, ...notes));
}
