// The shelf holds what the game ships. Most lies in the game's folder from the start. Grids of
// tracks wait packed; pictures and songs are fetched when one is first due, and stay with the page
// from then on. In the game's folder stands something small for each of these: nothing, or the
// picture in small.

const SIGN_AFTER_MS = 250; // a shorter wait needs no sign

class Shelf {
    // `later` maps paths to parcels with a title; `waiting` is the page's sign.
    constructor(later, waiting) {
        this.later = later;
        this.waiting = waiting;
        this.files = new Map(); // what stands in the game's folder from the start
        this.packed = new Map(); // grids
        this.fetched = new Map();
    }

    put(files) {
        for (const [path, bytes] of files) {
            const grid = path.endsWith(".trk.gz");
            if (grid) this.packed.set(path.slice(0, -3), bytes);
            this.files.set(grid ? path.slice(0, -3) : path, grid ? new Uint8Array() : bytes);
        }
        for (const path of Object.keys(this.later)) {
            if (!this.files.has(path)) this.files.set(path, new Uint8Array());
        }
    }

    // Lays the game's folder out, as the working directory of a program.
    layOut(FS, wanted = () => true) {
        for (const [path, bytes] of this.files) {
            if (!wanted(path)) continue;
            FS.mkdirTree(`/game/${path}`.replace(/\/[^/]*$/, ""));
            FS.writeFile(`/game/${path}`, bytes);
        }
        FS.chdir("/game");
    }

    async layOutGrids(FS) {
        for (const [path, bytes] of this.packed) FS.writeFile(`/game/${path}`, await unpacked(bytes));
    }

    // Puts the whole file in its place; false if it cannot be had and the player goes on without.
    async bring(FS, path) {
        const packed = this.packed.get(path);
        const bytes = packed ? await unpacked(packed) : await this.fetchOnce(path);
        if (bytes) FS.writeFile(`/game/${path}`, bytes);
        return bytes !== null;
    }

    release(FS, path) {
        const small = this.files.get(path);
        if (small && (this.packed.has(path) || this.later[path])) FS.writeFile(`/game/${path}`, small);
    }

    // Undefined for what the game does not ship, null for what cannot be had.
    async fetchOnce(path) {
        const parcel = this.later[path];
        if (!parcel) return undefined;
        if (!this.fetched.has(path)) {
            const bytes = await this.waiting.during(parcel);
            if (!bytes) return null;
            this.fetched.set(path, bytes);
        }
        return this.fetched.get(path);
    }
}

// The sign that the game waits for a file, over everything, also in full screen. Where the fetching
// fails it asks the player what to do.
class Waiting {
    constructor(dialog) {
        this.dialog = dialog;
        this.text = dialog.querySelector("p");
        this.bar = dialog.querySelector("progress");
        this.buttons = dialog.querySelector(".buttons");
        dialog.addEventListener("cancel", (event) => event.preventDefault());
    }

    async during(parcel) {
        const sign = setTimeout(() => this.show(`Fetching ${parcel.title}`), SIGN_AFTER_MS);
        try {
            for (;;) {
                try {
                    return await fetchParcel(parcel, (share) => { this.bar.value = share; });
                } catch (error) {
                    if (!(await this.again(parcel, error))) return null;
                    this.show(`Fetching ${parcel.title}`);
                }
            }
        } finally {
            clearTimeout(sign);
            if (this.dialog.open) this.dialog.close();
        }
    }

    show(text) {
        this.text.textContent = text;
        this.bar.hidden = false;
        this.buttons.hidden = true;
        this.bar.value = 0;
        if (!this.dialog.open) this.dialog.showModal();
    }

    // Whether the player wants another try.
    again(parcel, error) {
        this.show(`Fetching ${parcel.title} failed: ${error.message}.`);
        this.bar.hidden = true;
        this.buttons.hidden = false;
        const [retry, without] = this.buttons.children;
        const gone = error instanceof Gone;
        retry.textContent = gone ? "Load the game anew" : "Try again";
        retry.focus();
        return new Promise((resolve) => {
            retry.onclick = () => (gone ? location.reload() : resolve(true));
            without.onclick = () => resolve(false);
        });
    }
}
