// The page around the game: loads it with a bar that tells how far it is, runs it, and says what
// happens when it ends.

const byId = (id) => document.getElementById(id);
const manifest = JSON.parse(byId("manifest").textContent);

class Page {
    constructor() {
        this.waiting = new Waiting(byId("waiting"));
        this.shelf = new Shelf(manifest.later, this.waiting);
        this.records = new Records((text) => this.say(text));
        this.module = null; // the compiled program
        this.game = null; // the one that runs
        this.held = null; // while a dialog is open: called to let the game go on
        this.frames = 0; // shown so far
        this.lastWords = "";
    }

    // Fetches all that the game cannot start without. Parcels that are there already stay.
    async load() {
        const there = this.parcels ?? new Map();
        this.parcels = there;
        const shares = manifest.first.map((parcel) => (there.has(parcel.url) ? 1 : 0));
        const whole = manifest.first.reduce((sum, parcel) => sum + parcel.size, 0);
        const advance = (index, share) => {
            shares[index] = share;
            const done = shares.reduce((sum, own, i) => sum + own * manifest.first[i].size, 0);
            byId("loaded").value = done / whole;
        };
        await Promise.all(manifest.first.map(async (parcel, index) => {
            if (there.has(parcel.url)) return;
            const bytes = await fetchParcel(parcel, (share) => advance(index, share));
            there.set(parcel.url, filesOf(parcel, bytes));
        }));
    }

    async begin() {
        this.cover("Loading", {bar: true});
        try {
            await this.load();
        } catch (error) {
            const text = `The game could not be loaded: ${error.message}.`;
            const gone = error instanceof Gone;
            const then = () => (gone ? location.reload() : this.begin());
            return this.cover(text, {button: gone ? "Load it anew" : "Try again", then});
        }
        this.cover("Starting");
        try {
            if (!this.module) await this.unpack();
            await this.play();
        } catch (error) {
            this.stopped(error);
        }
    }

    async unpack() {
        const files = new Map([...this.parcels.values()].flatMap((parcel) => [...parcel]));
        this.create = factoryOf(files.get("brindle-run.js"), "createBrindleRun");
        this.module = await WebAssembly.compile(files.get("brindle-run.wasm"));
        for (const name of ["brindle-run.js", "brindle-run.wasm"]) files.delete(name);
        this.shelf.put(files);
        this.parcels.clear();
    }

    async play() {
        // A canvas keeps the marks of who has drawn on it: each run gets a new one.
        const canvas = byId("canvas").cloneNode();
        byId("canvas").replaceWith(canvas);
        this.game = await this.create({
            canvas,
            noInitialRun: true,
            noExitRuntime: true, // the start only returns at the first frame
            preRun: [(program) => { program.ENV.SDL_EMSCRIPTEN_ASYNCIFY = "0"; }],
            instantiateWasm: instantiator(this.module),
            print: (line) => console.info(line),
            printErr: (line) => {
                this.lastWords = line;
                console.warn(line);
            },
            nextFrame: () => this.nextFrame(),
            keepRecords: () => this.records.keep(),
            offerMouse: (offered) => this.offerMouse(canvas, offered),
            fetchShipped: async (path) => (await this.shelf.bring(this.game.FS, path)) !== false,
            releaseShipped: (path) => this.shelf.release(this.game.FS, path),
        });
        this.shelf.layOut(this.game.FS);
        await this.records.enter(this.game.FS);
        document.body.classList.add("playing");
        window.dispatchEvent(new Event("resize"));
        canvas.focus();
        this.game.callMain(["-win"]);
        const status = await this.game.Asyncify.whenDone();
        await this.left();
        if (status !== 0) throw new Error(this.lastWords || `status ${status}`);
        this.cover("See you at the next race.", {button: "Play again", then: () => this.begin()});
    }

    async left() {
        this.game.JSEvents.removeAllEventListeners();
        this.offerMouse(byId("canvas"), false);
        this.game.SDL2?.audioContext?.close();
        if (document.fullscreenElement) document.exitFullscreen();
        await this.records.keep();
    }

    // With a click in the menu the mouse is the game's. A browser takes Esc to give it back, so a race
    // does without.
    offerMouse(canvas, offered) {
        const take = () => canvas.requestPointerLock()?.catch?.(() => {}); // a click to come does it
        canvas.onmousedown = offered ? take : null;
        if (!offered && document.pointerLockElement) document.exitPointerLock();
    }

    async nextFrame() {
        await this.resumed;
        await new Promise((resolve) => requestAnimationFrame(resolve));
        ++this.frames;
    }

    stopped(error) {
        console.error(error);
        const text = `The game has stopped: ${error.message ?? error}. Your records are kept.`;
        this.cover(text, {button: "Start again", then: () => location.reload()});
    }

    // Shows the title picture with a line of text instead of the game.
    cover(text, {bar = false, button = "", then = null} = {}) {
        document.body.classList.remove("playing");
        byId("line").textContent = text;
        byId("loaded").hidden = !bar;
        const answer = byId("answer");
        answer.hidden = !button;
        answer.textContent = button;
        answer.onclick = then;
        if (button) answer.focus();
    }

    say(text) {
        byId("note").textContent = text;
        byId("note").hidden = false;
    }

    // The game stands still and is silent while something else has the player's attention.
    hold() {
        if (this.held) return;
        this.resumed = new Promise((resolve) => { this.held = resolve; });
        this.game?.SDL2?.audioContext?.suspend();
    }

    goOn() {
        this.held?.();
        this.held = null;
        if (!document.hidden) this.game?.SDL2?.audioContext?.resume();
        byId("canvas").focus();
    }
}

function factoryOf(script, name) {
    const text = new TextDecoder().decode(script);
    return new Function(`${text}; return ${name};`)();
}

const LEAVING_MS = 2000; // within so long, a page that has been left or reloaded is gone

// One page at a time: two would overwrite each other's records.
function soleOwner() {
    if (!navigator.locks) return Promise.resolve(true);
    return new Promise((resolve) => {
        const owned = () => {
            resolve(true);
            return new Promise(() => {});
        };
        navigator.locks.request("brindle-run", {signal: AbortSignal.timeout(LEAVING_MS)}, owned)
            .catch(() => resolve(false));
    });
}

const page = new Page();

async function open() {
    if (await soleOwner()) return page.begin();
    const text = "Brindle Run is open in another tab. Leave it there to play here.";
    page.cover(text, {button: "Try again", then: open});
}

byId("full-screen").onclick = () => {
    document.documentElement.requestFullscreen().catch((error) => page.say(error.message));
    byId("canvas").focus();
};
document.addEventListener("fullscreenchange", () => {
    // Where it can be had, Esc belongs to the game: it leads back to the menu.
    if (document.fullscreenElement) navigator.keyboard?.lock?.(["Escape"]).catch(() => {});
});
document.addEventListener("visibilitychange", () => {
    const sound = page.game?.SDL2?.audioContext;
    if (document.hidden) sound?.suspend();
    else if (!page.held) sound?.resume();
});
for (const dialog of document.querySelectorAll("dialog")) {
    // Keys that answer a dialog are not the game's.
    for (const kind of ["keydown", "keyup", "keypress"]) {
        dialog.addEventListener(kind, (event) => event.stopPropagation());
    }
}
open();
