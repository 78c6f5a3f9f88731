// The dialog of records: each lap leaves as a ghost file, a player's laps as a report, and a
// friend's ghost file comes in. The game stands still meanwhile.

const PDF = "/report.pdf";
const LAP = "/shared.lap";

class Exchange {
    constructor(dialog) {
        this.dialog = dialog;
        this.rows = dialog.querySelector("tbody");
        this.note = dialog.querySelector("output");
        this.tool = null; // the program that knows ghost files: {create, module}
        dialog.addEventListener("close", () => page.goOn());
        dialog.querySelector(".close").onclick = () => dialog.close();
        dialog.querySelector("input").onchange = (event) => this.open(event.target);
    }

    show() {
        if (!page.records.FS) return;
        page.hold();
        this.note.textContent = "";
        this.fill();
        this.dialog.showModal();
    }

    fill() {
        const laps = page.records.list();
        this.dialog.querySelector(".none").hidden = laps.length > 0;
        let last = "";
        this.rows.replaceChildren(...laps.map((lap) => {
            const row = document.createElement("tr");
            const track = manifest.tracks[lap.slot] ?? `Track ${lap.slot}`;
            const time = `${lap.seconds.toFixed(3)} s`;
            for (const text of [lap.name === last ? "" : lap.name, track, time]) {
                row.insertCell().textContent = text;
            }
            row.append(this.cell("Save ghost", lap.ghost && (() => this.saveGhost(lap, track))),
                this.cell("Report (PDF)", lap.name !== last && (() => this.saveReport(lap.name))));
            last = lap.name;
            return row;
        }));
    }

    cell(label, then) {
        const cell = document.createElement("td");
        if (!then) return cell;
        const button = document.createElement("button");
        button.textContent = label;
        button.onclick = () => this.busy(then);
        cell.append(button);
        return cell;
    }

    async busy(then) {
        this.note.textContent = "One moment …";
        try {
            this.note.textContent = await then();
        } catch (error) {
            this.note.textContent = `That did not work: ${error.message ?? error}.`;
        }
    }

    async ghostTool() {
        if (!this.tool) {
            const bytes = await page.waiting.during(manifest.tool);
            if (!bytes) throw new Error("the tool for ghosts could not be fetched");
            const files = filesOf(manifest.tool, bytes);
            const module = await WebAssembly.compile(files.get("brindle-ghost.wasm"));
            this.tool = {create: factoryOf(files.get("brindle-ghost.js"), "createBrindleGhost"), module};
        }
        return this.tool;
    }

    async saveGhost(lap, track) {
        const {create, module} = await this.ghostTool();
        const words = ["export", lap.name, String(lap.slot), LAP];
        const done = await runTool(create, module, page.shelf, page.records, words, null, LAP);
        if (!done.output) throw new Error(done.lines.join(" "));
        download(`${lap.name} - ${track}.lap`, done.output, "application/octet-stream");
        return `${lap.name}'s lap on ${track} is among your downloads.`;
    }

    async saveReport(name) {
        const words = [`-highscores=${name}`, "-o", PDF];
        const {create, module} = page;
        const done = await runTool(create, module, page.shelf, page.records, words, null, PDF);
        if (!done.output) throw new Error(done.lines.join(" "));
        download(`${name}_highscores.pdf`, done.output, "application/pdf");
        return `${name}'s report is among your downloads.`;
    }

    async open(input) {
        const file = input.files[0];
        if (!file) return;
        await this.busy(async () => {
            const bytes = new Uint8Array(await file.arrayBuffer());
            const {create, module} = await this.ghostTool();
            const words = ["import", "/exchange"];
            const done = await runTool(create, module, page.shelf, page.records, words, bytes, null);
            if (done.status === 0) await page.records.take(done.files);
            this.fill();
            return done.lines.join(" ").replaceAll("/exchange", file.name);
        });
        input.value = "";
    }
}

const exchange = new Exchange(byId("records"));
byId("show-records").onclick = () => exchange.show();
