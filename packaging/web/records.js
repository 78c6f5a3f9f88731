// Records, ghosts and names: they live in the browser's database, and leave and enter it as files.

const RECORDS = "/libsdl/BrindleRun"; // SDL's preference folder
const TABLE = `${RECORDS}/best_lap_times.txt`;
const ANSWER_MS = 20000; // within so long, a database on a busy machine answers

class Records {
    constructor(tell) {
        this.tell = tell; // says what went wrong, once
        this.FS = null;
        this.changed = false;
        this.keeping = null;
    }

    // Takes the records out of the database into a program's files.
    async enter(FS) {
        FS.mkdirTree(RECORDS);
        FS.mount(FS.filesystems.IDBFS, {}, RECORDS);
        this.FS = FS;
        try {
            await this.synchronise(true);
        } catch (error) {
            this.fail(error);
        }
    }

    // Where the browser breaks a copy off, for want of room for one, it says nothing at all.
    synchronise(fromDatabase) {
        return new Promise((resolve, reject) => {
            setTimeout(() => reject(new Error("it does not answer")), ANSWER_MS);
            this.FS.syncfs(fromDatabase, (error) => (error ? reject(error) : resolve()));
        });
    }

    // Copies the files to the database; one copy at a time, and another if they change meanwhile.
    keep() {
        this.changed = true;
        this.keeping ??= this.keepAll().finally(() => { this.keeping = null; });
        return this.keeping;
    }

    async keepAll() {
        for (let failures = 0; this.changed;) {
            this.changed = false;
            try {
                await this.synchronise(false);
            } catch (error) {
                // A file may have got another name while it was being copied.
                if (++failures > 2) return this.fail(error);
                this.changed = true;
            }
        }
        navigator.storage?.persist?.();
    }

    fail(error) {
        this.tell(`This browser keeps no records (${error.message ?? error}): they last until the ` +
            "page is closed. Ghosts and reports can be saved as files before that.");
        this.tell = () => {};
    }

    // [{name, slot, seconds, ghost}] as the table has them.
    list() {
        const laps = [];
        let name = "";
        for (const line of this.text().split("\n")) {
            const section = /^\s*\[([^\]]+)\]/.exec(line);
            const lap = /^\s*([1-9]): ([\d.]+)(?: (\S+))?/.exec(line);
            if (section) name = section[1];
            if (lap) laps.push({name, slot: Number(lap[1]), seconds: Number(lap[2]), ghost: lap[3]});
        }
        return laps;
    }

    text() {
        return this.FS?.analyzePath(TABLE).exists ? this.FS.readFile(TABLE, {encoding: "utf8"}) : "";
    }

    files() {
        const files = new Map();
        for (const name of this.FS.readdir(RECORDS)) {
            const path = `${RECORDS}/${name}`;
            if (this.FS.isFile(this.FS.stat(path).mode)) files.set(path, this.FS.readFile(path));
        }
        return files;
    }

    // Takes over what a tool has written.
    async take(files) {
        const before = this.files();
        for (const [path, bytes] of files) {
            const old = before.get(path);
            if (old && old.length === bytes.length && old.every((byte, i) => byte === bytes[i])) continue;
            this.FS.writeFile(path, bytes);
        }
        await this.keep();
    }
}

// Runs a program of the game's once on copies of the records; {status, lines, output}, where
// `output` holds the bytes of the file that it was to write, if it did.
async function runTool(create, module, shelf, records, words, input, output) {
    const lines = [];
    const tool = await create({
        noInitialRun: true,
        instantiateWasm: instantiator(module),
        print: (line) => lines.push(line),
        printErr: (line) => lines.push(line),
        keepRecords: () => {},
    });
    shelf.layOut(tool.FS, (path) => path.startsWith("tracks/") || path.startsWith("art/fonts/"));
    await shelf.layOutGrids(tool.FS);
    tool.FS.mkdirTree(RECORDS);
    for (const [path, bytes] of records.files()) tool.FS.writeFile(path, bytes);
    if (input) tool.FS.writeFile("/exchange", input);
    const status = await tool.callMain(words);
    const inner = new Records(() => {});
    inner.FS = tool.FS;
    const written = output && tool.FS.analyzePath(output).exists ? tool.FS.readFile(output) : null;
    return {status, lines, files: inner.files(), output: written};
}

function instantiator(module) {
    return (imports, done) => {
        WebAssembly.instantiate(module, imports).then((instance) => done(instance, module));
        return {};
    };
}

function download(name, bytes, type) {
    const link = document.createElement("a");
    link.href = URL.createObjectURL(new Blob([bytes], {type}));
    link.download = name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
}
