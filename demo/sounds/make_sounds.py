#!/usr/bin/env python3
# SPDX-FileCopyrightText: 2026 The Proscenium authors
# SPDX-License-Identifier: GPL-2.0-or-later
"""Makes the demo's sounds from nothing: make_sounds.py NAME OUT.wav, with NAME one of those in SOUNDS below."""
import math
import random
import struct
import sys
import wave

RATE = 22050


def envelope(t, length, attack=0.01, release=0.05):
    return max(0.0, min(1.0, t / attack, (length - t) / release))


def tone(frequency, t, overtones=(1.0, 0.35, 0.12)):
    return sum(a * math.sin(2 * math.pi * frequency * (k + 1) * t) for k, a in enumerate(overtones))


def step():
    """A foot on gravel: noise that dies away, darker towards its end."""
    noise, low, out = random.Random(4), 0.0, []
    for i in range(int(0.11 * RATE)):
        t = i / RATE
        low += (noise.uniform(-1, 1) - low) * (0.5 - 3 * t)
        out.append(0.8 * low * math.exp(-35 * t))
    return out


def chime():
    return [0.3 * tone(880, i / RATE, (1, 0, 0.4, 0, 0.2)) * math.exp(-5 * i / RATE) * envelope(i / RATE, 0.8)
            for i in range(int(0.8 * RATE))]


def evening():
    """Four chords of two seconds, each a slow broken one, that lead round to the first."""
    chords = ((220.0, 261.63, 329.63), (174.61, 220.0, 261.63), (130.81, 196.0, 261.63), (196.0, 246.94, 293.66))
    out = []
    for chord in chords:
        for i in range(2 * RATE):
            t = i / RATE
            value = 0.1 * tone(chord[0] / 2, t, (1, 0.2)) * envelope(t, 2, 0.3, 0.4)
            for k, frequency in enumerate(chord + chord[1::-1]):
                since = t - 0.4 * k
                if since > 0:
                    value += 0.12 * tone(frequency, since) * math.exp(-3 * since) * envelope(t, 2, 0.01, 0.1)
            out.append(value)
    return out


def voice():
    """Syllables of nobody's language: a buzz through two resonances, which move from vowel to vowel."""
    vowels = ((700, 1200), (400, 2000), (300, 800), (500, 1800), (600, 1000))
    choice, out, phase = random.Random(7), [], 0.0
    for syllable in range(11):
        first, second = vowels[choice.randrange(len(vowels))]
        pitch, length = choice.uniform(105, 150), choice.uniform(0.12, 0.24)
        for i in range(int(length * RATE)):
            t = i / RATE
            phase += pitch * (1 - 0.4 * t) / RATE
            value = 0.0
            for harmonic in range(1, 24):
                f = harmonic * pitch
                gain = 1 / (1 + ((f - first) / 90) ** 2) + 0.5 / (1 + ((f - second) / 130) ** 2)
                value += gain * math.sin(2 * math.pi * harmonic * phase)
            out.append(0.16 * value * envelope(t, length, 0.03, 0.06))
        out.extend([0.0] * int(RATE * (0.25 if syllable == 5 else 0.04)))
    return out


SOUNDS = {f.__name__: f for f in (step, chime, evening, voice)}


def main():
    if len(sys.argv) != 3 or sys.argv[1] not in SOUNDS:
        sys.exit(__doc__)
    samples = SOUNDS[sys.argv[1]]()
    with wave.open(sys.argv[2], 'wb') as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(b''.join(struct.pack('<h', round(32767 * max(-1.0, min(1.0, s)))) for s in samples))


main()
