// Fetching files whole, with progress, and telling in words what went wrong.

// What the page names is not on the server: the page is older than what stands there.
class Gone extends Error {
    constructor() {
        super("it is not there any more, as if there were a newer version");
    }
}

const STALLED_MS = 20000; // without a byte for so long, a connection is taken for lost

async function fetchBytes(url, told) {
    const control = new AbortController();
    let alarm = setTimeout(() => control.abort(), STALLED_MS);
    const pieces = [];
    let length = 0;
    try {
        const answer = await fetch(url, {signal: control.signal});
        if (answer.status === 404) throw new Gone();
        if (!answer.ok) throw new Error(`the server answered ${answer.status}`);
        const reader = answer.body.getReader();
        for (let piece = await reader.read(); !piece.done; piece = await reader.read()) {
            clearTimeout(alarm);
            alarm = setTimeout(() => control.abort(), STALLED_MS);
            pieces.push(piece.value);
            length += piece.value.length;
            told(length);
        }
    } catch (error) {
        const lost = error.name === "AbortError" || error instanceof TypeError;
        throw lost ? new Error("the connection was lost") : error;
    } finally {
        clearTimeout(alarm);
    }
    return joined(pieces, length);
}

function joined(pieces, length) {
    const whole = new Uint8Array(length);
    let place = 0;
    for (const piece of pieces) {
        whole.set(piece, place);
        place += piece.length;
    }
    return whole;
}

// Some servers unpack what they send by themselves: such bytes stay as they are.
async function unpacked(bytes) {
    if (bytes[0] !== 0x1f || bytes[1] !== 0x8b) return bytes;
    const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
    return new Uint8Array(await new Response(stream).arrayBuffer());
}

// A parcel is {url, size} as it is sent, with `unpacked`, the length behind that, if it is packed.
// `told` hears of the share that is there, 0 to 1.
async function fetchParcel(parcel, told) {
    const sent = await fetchBytes(parcel.url, (length) => told(Math.min(1, length / parcel.size)));
    const bytes = parcel.unpacked ? await unpacked(sent) : sent;
    if (bytes.length !== (parcel.unpacked ?? parcel.size)) throw new Error("it came incomplete");
    return bytes;
}

// The files of a parcel, by path; parcel.files has [path, length] in their order.
function filesOf(parcel, bytes) {
    const files = new Map();
    let place = 0;
    for (const [path, length] of parcel.files) {
        files.set(path, bytes.subarray(place, place + length));
        place += length;
    }
    return files;
}
