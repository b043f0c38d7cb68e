#include "peer/filtrapalavroes.h"

#include <QStringList>

namespace velmora {

namespace {

// Blanks only, as the chat line is trimmed.
QString TiraBrancos(const QString& t) {
    qsizetype i = 0, f = t.size();
    while (i < f && t[i] == ' ') ++i;
    while (f > i && t[f - 1] == ' ') --f;
    return t.mid(i, f - i);
}

// Replaces each occurrence, searching again from the start after every replacement.
void Troca(QString& texto, const QString& procurado, const QString& novo) {
    for (qsizetype p = texto.indexOf(procurado); p >= 0; p = texto.indexOf(procurado))
        texto.replace(p, procurado.size(), novo);
}

} // namespace

QString FiltraPalavroes(const QString& texto) {
    static const QString lista =
        " buceta , caralho , porra , merda , bosta , viado , puta , boceta , cú , cu , fuder , "
        "foda , fudido , disgraça , fude , cusao , cusão , veado ";
    QString t = " " + TiraBrancos(texto) + " ";
    QStringList entradas = lista.split(',');
    const QStringList maiusculas = lista.toUpper().split(',');
    entradas += maiusculas;
    int i = 0;
    for (const QString& entrada : entradas) {
        if (++i > 100 || entrada.isEmpty()) break;
        const qsizetype n = TiraBrancos(entrada).size();
        Troca(t, entrada, " " + QString(41, '*').left(n) + " ");
    }
    return TiraBrancos(t);
}

} // namespace velmora
