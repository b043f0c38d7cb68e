#!/usr/bin/env python3
"""Writes the game's two tunes as standard MIDI files (format 1, 480 ticks a beat).

"sweethrt.mid" is the opening waltz, "passport.mid" the fanfare of a new record.
Both are written out note by note below: a melody, a bass line and an accompaniment,
with drums in the second. Nothing is random, so two runs give the same bytes.

    python3 tools/gera_musica.py assets/
"""
import struct
import sys
from pathlib import Path

TICKS = 480  # ticks per beat (quarter note)

NOTAS = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}
ACORDES = {"": (0, 4, 7), "m": (0, 3, 7), "7": (0, 4, 7, 10), "m7": (0, 3, 7, 10)}


def altura(nome):
    """'C4' is 60, 'Bb4' 70, 'F#3' 54."""
    letra, resto = nome[0], nome[1:]
    valor = NOTAS[letra]
    while resto and resto[0] in "b#":
        valor += -1 if resto[0] == "b" else 1
        resto = resto[1:]
    return 12 * (int(resto) + 1) + valor


def acorde(nome):
    """'Gm' gives (root pitch class, intervals); 'Bb7' is B flat with a minor seventh."""
    raiz = NOTAS[nome[0]]
    resto = nome[1:]
    if resto.startswith("b"):
        raiz, resto = raiz - 1, resto[1:]
    elif resto.startswith("#"):
        raiz, resto = raiz + 1, resto[1:]
    return raiz % 12, ACORDES[resto]


def voz(nome, baixo, alto):
    """The chord's notes that fall in [baixo, alto), lowest first: a close voicing."""
    raiz, intervalos = acorde(nome)
    classes = {(raiz + i) % 12 for i in intervalos}
    return [p for p in range(baixo, alto) if p % 12 in classes]


def raiz_no_grave(nome, baixo):
    """The chord's root at or just above `baixo`."""
    raiz, _ = acorde(nome)
    p = baixo
    while p % 12 != raiz:
        p += 1
    return p


class Trilha:
    """One track: a name, a channel, a program, and notes placed in beats."""

    def __init__(self, nome, canal, programa, volume, pan):
        self.nome, self.canal, self.programa = nome, canal, programa
        self.volume, self.pan = volume, pan
        self.notas = []  # (start beat, length in beats, pitch, velocity)

    def nota(self, inicio, duracao, altura_, forca):
        self.notas.append((inicio, duracao, altura_, forca))

    def melodia(self, inicio, texto, forca):
        """Plays 'C5:2 A4:1 R:1 ...' from `inicio`; returns the beat after the last note."""
        t = inicio
        for item in texto.split():
            nome, duracao = item.split(":")
            duracao = float(duracao)
            if nome != "R":
                # a hair shorter than written, so repeated notes are heard as two
                self.nota(t, duracao * 0.92, altura(nome), forca)
            t += duracao
        return t

    def eventos(self):
        cabeca = [(0, 0, bytes([0xFF, 0x03, len(self.nome)]) + self.nome.encode("ascii"))]
        if self.canal != 9:
            cabeca.append((0, 1, bytes([0xC0 | self.canal, self.programa])))
        cabeca.append((0, 1, bytes([0xB0 | self.canal, 7, self.volume])))
        cabeca.append((0, 1, bytes([0xB0 | self.canal, 10, self.pan])))
        cabeca.append((0, 1, bytes([0xB0 | self.canal, 91, 40])))
        corpo = []
        for inicio, duracao, p, forca in self.notas:
            liga = int(round(inicio * TICKS))
            desliga = max(liga + 1, int(round((inicio + duracao) * TICKS)))
            # at one tick, notes end (0) before notes begin (1)
            corpo.append((desliga, 0, bytes([0x80 | self.canal, p, 0])))
            corpo.append((liga, 1, bytes([0x90 | self.canal, p, forca])))
        return cabeca + sorted(corpo, key=lambda e: (e[0], e[1], e[2]))


def numero_variavel(valor):
    partes = [valor & 0x7F]
    valor >>= 7
    while valor:
        partes.append(0x80 | (valor & 0x7F))
        valor >>= 7
    return bytes(reversed(partes))


def bloco_trilha(eventos, fim):
    dados, agora = bytearray(), 0
    for tick, _, mensagem in eventos:
        dados += numero_variavel(tick - agora) + mensagem
        agora = tick
    dados += numero_variavel(max(0, fim - agora)) + b"\xFF\x2F\x00"
    return b"MTrk" + struct.pack(">I", len(dados)) + bytes(dados)


def grava_midi(caminho, titulo, bpm, compasso, armadura, trilhas, batidas):
    fim = int(round(batidas * TICKS))
    microssegundos = int(round(60_000_000 / bpm))
    numerador, denominador = compasso
    conducao = [
        (0, 0, bytes([0xFF, 0x03, len(titulo)]) + titulo.encode("ascii")),
        (0, 0, bytes([0xFF, 0x51, 0x03]) + microssegundos.to_bytes(3, "big")),
        (0, 0, bytes([0xFF, 0x58, 0x04, numerador, denominador.bit_length() - 1, 24, 8])),
        (0, 0, bytes([0xFF, 0x59, 0x02, armadura & 0xFF, 0])),
    ]
    blocos = [bloco_trilha(conducao, fim)] + [bloco_trilha(t.eventos(), fim) for t in trilhas]
    cabecalho = b"MThd" + struct.pack(">IHHH", 6, 1, len(blocos), TICKS)
    Path(caminho).write_bytes(cabecalho + b"".join(blocos))


def valsa(destino):
    """A gentle waltz in F major, 3/4: flute over piano oom-pah-pah, bass and strings."""
    # eight-bar phrases: A, A', B, A'' and a closing bar
    harmonia = (
        "F Dm Bb C F Dm Gm C "
        "F Dm Bb C Am Dm C7 F "
        "Bb F Gm Dm Bb F G7 C "
        "F Dm Bb C F Bb C7 F "
        "F"
    ).split()
    frase_a = "C5:2 A4:1 D5:2 F5:1 F5:2 D5:1 E5:2 C5:1 A4:1 C5:1 F5:1 A5:2 F5:1 G5:1 F5:1 D5:1 E5:3"
    frase_a2 = (
        "C5:2 A4:1 D5:2 F5:1 F5:1.5 G5:0.5 F5:1 E5:2 G5:1 "
        "A5:1.5 G5:0.5 E5:1 F5:1.5 E5:0.5 D5:1 E5:1 G4:1 Bb4:1 A4:2 R:1"
    )
    frase_b = (
        "D5:0.5 F5:0.5 Bb5:2 A5:1 G5:1 F5:1 G5:0.5 A5:0.5 Bb5:1 G5:1 F5:2 D5:1 "
        "D5:0.5 F5:0.5 Bb5:2 A5:1 C6:1 A5:1 B5:1 G5:1 F5:1 E5:3"
    )
    frase_a3 = (
        "C5:2 A4:1 D5:2 F5:1 F5:2 D5:1 E5:2 C5:1 "
        "A4:1 C5:1 F5:1 Bb5:1.5 A5:0.5 F5:1 G5:1.5 E5:0.5 C5:1 F5:3"
    )
    flauta = Trilha("Flauta", 0, 73, 100, 72)
    piano = Trilha("Piano", 1, 0, 78, 56)
    baixo = Trilha("Baixo", 2, 32, 96, 64)
    cordas = Trilha("Cordas", 3, 48, 60, 50)

    t = 0.0
    for frase in (frase_a, frase_a2, frase_b, frase_a3):
        t = flauta.melodia(t, frase, 84)
    # the last bar: the tonic held by the flute over the closing chord
    flauta.nota(t, 2.8, altura("F5"), 70)
    flauta.nota(t, 2.8, altura("A4"), 56)

    for compasso, nome in enumerate(harmonia):
        inicio = compasso * 3.0
        raiz = raiz_no_grave(nome, altura("F2"))
        ultimo = compasso == len(harmonia) - 1
        if ultimo:
            baixo.nota(inicio, 2.8, raiz, 84)
            for p in voz(nome, altura("F3"), altura("F4")):
                piano.nota(inicio, 2.8, p, 58)
        else:
            baixo.nota(inicio, 1.9, raiz, 88)
            baixo.nota(inicio + 2.0, 0.9, raiz + 7 if raiz + 7 < altura("E3") else raiz - 5, 70)
            for batida in (1.0, 2.0):
                for p in voz(nome, altura("G3"), altura("G4")):
                    piano.nota(inicio + batida, 0.7, p, 50)
        if compasso >= 8:
            for p in voz(nome, altura("C4"), altura("C5")):
                cordas.nota(inicio, 2.95, p, 40)
    grava_midi(destino / "sweethrt.mid", "Sweetheart waltz", 116, (3, 4), -1,
               [flauta, piano, baixo, cordas], len(harmonia) * 3.0 + 1.0)


def fanfarra(destino):
    """A bright tune in C major, 4/4: trumpet, electric piano, bass and a light drum kit."""
    # each bar is a chord, or two chords of two beats
    harmonia = [
        ["C"], ["Am"], ["F"], ["G"], ["C"], ["Am"], ["Dm", "G"], ["C"],
        ["F"], ["G"], ["Em"], ["Am"], ["Dm"], ["G"], ["C"], ["G7"],
        ["C"], ["Am"], ["F"], ["G"], ["C"], ["Am"], ["Dm", "G"], ["C"],
        ["C"],
    ]
    frase_a = (
        "E5:0.5 G5:0.5 C6:1 G5:0.5 E5:0.5 G5:1 A5:1.5 G5:0.5 E5:1 C5:1 "
        "F5:0.5 A5:0.5 C6:1 A5:1 F5:1 G5:1.5 F5:0.5 D5:2 "
        "E5:0.5 G5:0.5 C6:1 G5:0.5 E5:0.5 G5:1 A5:1 C6:1 B5:0.5 A5:0.5 E5:1 "
        "F5:1 A5:1 G5:1 B5:1"
    )
    frase_b = (
        "A5:1 A5:0.5 G5:0.5 F5:1 C5:1 D5:1 D5:0.5 E5:0.5 G5:2 "
        "E5:1 G5:1 B5:1.5 A5:0.5 A5:2 E5:1 C5:1 "
        "D5:0.5 F5:0.5 A5:1 F5:1 D5:1 B4:0.5 D5:0.5 G5:1 F5:1 D5:1 "
        "E5:1 G5:1 C6:1 E6:1 D6:1.5 B5:0.5 G5:1 F5:1"
    )
    trompete = Trilha("Trompete", 0, 56, 92, 70)
    teclado = Trilha("Piano eletrico", 1, 4, 74, 52)
    baixo = Trilha("Baixo", 2, 33, 100, 64)
    bateria = Trilha("Bateria", 9, 0, 82, 64)

    t = trompete.melodia(0.0, frase_a + " C6:2 R:2", 92)
    t = trompete.melodia(t, frase_b, 92)
    t = trompete.melodia(t, frase_a + " C6:1 G5:1 E5:1 G5:1", 92)
    trompete.nota(t, 3.6, altura("C6"), 96)
    trompete.nota(t, 3.6, altura("G5"), 76)

    bumbo, caixa, chimbal, prato = 36, 38, 42, 49
    for compasso, acordes in enumerate(harmonia):
        inicio = compasso * 4.0
        ultimo = compasso == len(harmonia) - 1
        if ultimo:
            baixo.nota(inicio, 3.6, raiz_no_grave("C", altura("C2")), 100)
            for p in voz("C", altura("E3"), altura("E4")):
                teclado.nota(inicio, 3.6, p, 70)
            bateria.nota(inicio, 1.0, bumbo, 100)
            bateria.nota(inicio, 3.0, prato, 96)
            continue
        metade = 4.0 / len(acordes)
        for k, nome in enumerate(acordes):
            comeco = inicio + k * metade
            raiz = raiz_no_grave(nome, altura("C2"))
            quinta = raiz + 7
            desenho = (raiz, quinta, raiz + 12, quinta) if metade == 4.0 else (raiz, quinta)
            for i, p in enumerate(desenho):
                baixo.nota(comeco + i, 0.85, p, 92 if i == 0 else 76)
            if metade == 4.0:
                golpes = ((0.0, 1.4), (1.5, 1.4), (3.0, 0.9))  # 3 + 3 + 2
            else:
                golpes = ((0.0, 0.9), (1.0, 0.9))
            for deslocamento, duracao in golpes:
                for p in voz(nome, altura("E4"), altura("E5")):
                    teclado.nota(comeco + deslocamento, duracao, p, 58)
        for oitavo in range(8):
            bateria.nota(inicio + oitavo * 0.5, 0.25, chimbal, 52 if oitavo % 2 == 0 else 36)
        for batida in (0.0, 2.0, 2.5):
            bateria.nota(inicio + batida, 0.4, bumbo, 92 if batida != 2.5 else 64)
        for batida in (1.0, 3.0):
            bateria.nota(inicio + batida, 0.4, caixa, 70)
        if compasso % 8 == 0:
            bateria.nota(inicio, 2.0, prato, 80)
    grava_midi(destino / "passport.mid", "Passport", 132, (4, 4), 0,
               [trompete, teclado, baixo, bateria], len(harmonia) * 4.0 + 1.0)


def main():
    destino = Path(sys.argv[1] if len(sys.argv) > 1 else "assets")
    destino.mkdir(parents=True, exist_ok=True)
    valsa(destino)
    fanfarra(destino)
    for nome in ("sweethrt.mid", "passport.mid"):
        print(destino / nome)


if __name__ == "__main__":
    main()
