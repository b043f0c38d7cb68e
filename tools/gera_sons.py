#!/usr/bin/env python3
"""Synthesises the game's short sound effects as 16-bit mono WAV files.

Every sound is built from damped sines and a little filtered noise drawn from a
generator with a fixed seed, so two runs give the same bytes.

    python3 tools/gera_sons.py assets/
"""
import math
import random
import struct
import sys
import wave
from pathlib import Path

TAXA = 44100  # samples per second


def amostras(duracao):
    return int(round(duracao * TAXA))


def ruido_filtrado(n, semente, suavidade):
    """White noise through a one-pole low-pass; suavidade in (0, 1], lower is darker."""
    gerador = random.Random(semente)
    saida, anterior = [], 0.0
    for _ in range(n):
        anterior += suavidade * (gerador.uniform(-1.0, 1.0) - anterior)
        saida.append(anterior)
    return saida


def ruido_agudo(n, semente):
    """White noise with its low end taken off (first difference)."""
    gerador = random.Random(semente)
    saida, anterior = [], 0.0
    for _ in range(n):
        atual = gerador.uniform(-1.0, 1.0)
        saida.append(atual - anterior)
        anterior = atual
    return saida


def parcial(n, freq, amplitude, decaimento, inicio=0, fase=0.0, glissando=0.0):
    """A sine that starts at sample `inicio` and dies away exponentially.

    `glissando` bends the pitch from freq*(1+glissando) down to freq as it decays."""
    saida = [0.0] * n
    angulo = fase
    for i in range(inicio, n):
        t = (i - inicio) / TAXA
        envelope = math.exp(-t / decaimento)
        if envelope < 1e-5:
            break
        f = freq * (1.0 + glissando * envelope)
        angulo += 2.0 * math.pi * f / TAXA
        saida[i] = amplitude * envelope * math.sin(angulo)
    return saida


def soma(*sinais):
    n = max(len(s) for s in sinais)
    return [sum(s[i] for s in sinais if i < len(s)) for i in range(n)]


def envelope_bordas(sinal, ataque, soltura):
    """Short linear ramps at both ends, so no sound starts or stops with a click."""
    n = len(sinal)
    a, r = max(1, amostras(ataque)), max(1, amostras(soltura))
    saida = list(sinal)
    for i in range(min(a, n)):
        saida[i] *= i / a
    for i in range(min(r, n)):
        saida[n - 1 - i] *= i / r
    return saida


def normaliza(sinal, pico):
    maior = max(abs(x) for x in sinal) or 1.0
    return [x * pico / maior for x in sinal]


def grava(caminho, sinal):
    quadros = b"".join(
        struct.pack("<h", max(-32767, min(32767, int(round(x * 32767))))) for x in sinal
    )
    with wave.open(str(caminho), "wb") as arquivo:
        arquivo.setnchannels(1)
        arquivo.setsampwidth(2)
        arquivo.setframerate(TAXA)
        arquivo.writeframes(quadros)


def mover():
    """A wooden piece set down on the board: a low knock, two wood tones, a soft contact."""
    n = amostras(0.11)
    batida = parcial(n, 165.0, 1.0, 0.022, glissando=0.35)
    madeira = soma(parcial(n, 640.0, 0.45, 0.011), parcial(n, 1180.0, 0.22, 0.006))
    ruido = ruido_filtrado(n, 11, 0.25)
    contato = [x * math.exp(-i / (0.004 * TAXA)) * 0.5 for i, x in enumerate(ruido)]
    return normaliza(envelope_bordas(soma(batida, madeira, contato), 0.0006, 0.012), 0.62)


def clique_botao():
    """A crisp button click."""
    n = amostras(0.045)
    corpo = soma(parcial(n, 2050.0, 0.8, 0.005), parcial(n, 3420.0, 0.45, 0.0025))
    estalo = [x * math.exp(-i / (0.0012 * TAXA)) * 0.6 for i, x in enumerate(ruido_agudo(n, 23))]
    return normaliza(envelope_bordas(soma(corpo, estalo), 0.0003, 0.008), 0.5)


def clique_nivel():
    """A light double tick, higher and rounder than the button click."""
    n = amostras(0.085)
    segundo = amostras(0.03)
    primeiro_tique = soma(parcial(n, 1568.0, 0.7, 0.008), parcial(n, 3136.0, 0.2, 0.004))
    segundo_tique = soma(
        parcial(n, 2093.0, 0.8, 0.010, inicio=segundo),
        parcial(n, 4186.0, 0.2, 0.005, inicio=segundo),
    )
    return normaliza(envelope_bordas(soma(primeiro_tique, segundo_tique), 0.0004, 0.01), 0.45)


def tom_suave(n, freq, inicio, duracao, amplitude):
    """A soft square-ish tone (odd harmonics 1, 3, 5) with rounded edges."""
    saida = [0.0] * n
    comprimento = amostras(duracao)
    borda = amostras(0.008)
    for k in range(comprimento):
        i = inicio + k
        if i >= n:
            break
        t = k / TAXA
        env = min(1.0, k / borda, (comprimento - k) / borda)
        onda = sum(math.sin(2 * math.pi * freq * h * t) / h for h in (1, 3, 5))
        saida[i] = amplitude * env * onda
    return saida


def alarme():
    """Three quick rising pairs of beeps: the opponent is here."""
    n = amostras(0.93)
    partes = []
    for rodada in range(3):
        base = amostras(0.31 * rodada)
        partes.append(tom_suave(n, 880.0, base, 0.12, 0.5))
        partes.append(tom_suave(n, 1174.66, base + amostras(0.13), 0.13, 0.5))
    return normaliza(envelope_bordas(soma(*partes), 0.001, 0.02), 0.5)


def sino(n, freq, inicio, amplitude):
    """A small bell: a fundamental and three slightly inharmonic partials."""
    parciais = ((1.0, 1.0, 0.32), (2.0, 0.35, 0.18), (2.76, 0.2, 0.11), (5.4, 0.08, 0.05))
    return soma(*(parcial(n, freq * r, amplitude * a, d, inicio=inicio) for r, a, d in parciais))


def conversa():
    """A two-note chime for a chat line or a refusal."""
    n = amostras(0.72)
    sinos = soma(sino(n, 987.77, 0, 0.8), sino(n, 1318.51, amostras(0.12), 0.8))
    return normaliza(envelope_bordas(sinos, 0.003, 0.05), 0.5)


SONS = {
    "mover.wav": mover,
    "Click.wav": clique_botao,
    "click.wav": clique_nivel,
    "alarme.wav": alarme,
    "talk.wav": conversa,
}


def main():
    destino = Path(sys.argv[1] if len(sys.argv) > 1 else "assets")
    destino.mkdir(parents=True, exist_ok=True)
    for nome, gerador in SONS.items():
        grava(destino / nome, gerador())
        print(destino / nome)


if __name__ == "__main__":
    main()
