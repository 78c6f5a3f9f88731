"""Standard MIDI files: a tempo track, and a track for each voice."""

PPQ = 480


def variable(number):
    """A MIDI variable-length quantity."""
    out = [number & 0x7F]
    while number > 0x7F:
        number >>= 7
        out.append(0x80 | (number & 0x7F))
    return bytes(reversed(out))


def track(events):
    """A chunk of (tick, order, bytes) events, in the order of their ticks."""
    body, now = bytearray(), 0
    for tick, _, message in sorted(events, key=lambda e: (e[0], e[1])):
        body += variable(tick - now) + message
        now = tick
    body += b"\x00\xff\x2f\x00"
    return b"MTrk" + len(body).to_bytes(4, "big") + bytes(body)


def tempo_track(beats_a_minute):
    micros = round(60e6 / beats_a_minute)
    return track([(0, 0, b"\xff\x51\x03" + micros.to_bytes(3, "big"))])


def voice_track(channel, program, controls, notes):
    """`controls` are (tick, number, value); `notes` are (tick, ticks, pitch, velocity)."""
    events = [(0, 0, bytes([0xC0 | channel, program]))]
    events += [(tick, 1, bytes([0xB0 | channel, number, value])) for tick, number, value in controls]
    for tick, ticks, pitch, velocity in notes:
        events.append((tick, 3, bytes([0x90 | channel, pitch, velocity])))
        # A note that ends where the next begins ends first.
        events.append((tick + ticks, 2, bytes([0x80 | channel, pitch, 0])))
    return track(events)


def file(beats_a_minute, tracks):
    head = b"MThd" + (6).to_bytes(4, "big") + (1).to_bytes(2, "big")
    head += (len(tracks) + 1).to_bytes(2, "big") + PPQ.to_bytes(2, "big")
    return head + tempo_track(beats_a_minute) + b"".join(tracks)
