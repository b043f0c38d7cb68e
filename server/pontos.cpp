#include "server/pontos.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

namespace velmora::servidor {

namespace {

constexpr double kEscala = 173.7178;
constexpr double kTau = 0.75;
constexpr double kPi = 3.14159265358979323846;

double G(double phi) {
    return 1.0 / std::sqrt(1.0 + 3.0 * phi * phi / (kPi * kPi));
}

double EGlicko(double mu, double muj, double phij) {
    return 1.0 / (1.0 + std::exp(-G(phij) * (mu - muj)));
}

std::int64_t Arredonda(double x) {
    return static_cast<std::int64_t>(std::llround(x));
}

} // namespace

double Esperado(const Glicko& a, const Glicko& b) {
    return EGlicko((a.r - 1500.0) / kEscala, (b.r - 1500.0) / kEscala, b.rd / kEscala);
}

Glicko AtualizaGlicko(const Glicko& a, const Glicko& b, double resultado) {
    const double mu = (a.r - 1500.0) / kEscala, phi = a.rd / kEscala;
    const double muj = (b.r - 1500.0) / kEscala, phij = b.rd / kEscala;
    const double g = G(phij);
    const double e = EGlicko(mu, muj, phij);
    const double v = 1.0 / (g * g * e * (1.0 - e));
    const double delta = v * g * (resultado - e);
    // New volatility by the Illinois iteration
    const double aLn = std::log(a.sigma * a.sigma);
    const auto f = [&](double x) {
        const double ex = std::exp(x);
        const double d = phi * phi + v + ex;
        return ex * (delta * delta - phi * phi - v - ex) / (2.0 * d * d) -
               (x - aLn) / (kTau * kTau);
    };
    double A = aLn, B;
    if (delta * delta > phi * phi + v) {
        B = std::log(delta * delta - phi * phi - v);
    } else {
        int k = 1;
        while (f(aLn - k * kTau) < 0 && k < 100) ++k;
        B = aLn - k * kTau;
    }
    double fA = f(A), fB = f(B);
    for (int i = 0; i < 100 && std::abs(B - A) > 1e-6; ++i) {
        const double C = A + (A - B) * fA / (fB - fA);
        const double fC = f(C);
        if (fC * fB <= 0) {
            A = B;
            fA = fB;
        } else {
            fA /= 2.0;
        }
        B = C;
        fB = fC;
    }
    Glicko n;
    n.sigma = std::exp(A / 2.0);
    const double phiEstrela = std::sqrt(phi * phi + n.sigma * n.sigma);
    const double phiNovo = 1.0 / std::sqrt(1.0 / (phiEstrela * phiEstrela) + 1.0 / v);
    const double muNovo = mu + phiNovo * phiNovo * g * (resultado - e);
    n.r = std::clamp(muNovo * kEscala + 1500.0, 0.0, 4000.0);
    n.rd = std::clamp(phiNovo * kEscala, 30.0, 350.0);
    if (!std::isfinite(n.r) || !std::isfinite(n.rd) || !std::isfinite(n.sigma)) return a;
    n.sigma = std::clamp(n.sigma, 0.01, 0.2);
    return n;
}

Premio CalculaPremio(std::int64_t pontosVencedor, const Glicko& gVencedor,
                     std::int64_t pontosPerdedor, const Glicko& gPerdedor, int repeticoes,
                     bool perdedorVisitante) {
    const double e = Esperado(gVencedor, gPerdedor);
    double fator = std::pow(0.5, std::clamp(repeticoes, 0, 30));
    if (perdedorVisitante) fator *= 0.5;
    Premio p;
    p.ganho = Arredonda(fator * (30.0 + 30.0 * (1.0 - e)));
    // Below the starting 1000 a loss costs less, down to a quarter, so that a beginner
    // who loses often settles at a few hundred points instead of at 0
    const double alivio = std::clamp(static_cast<double>(pontosPerdedor) / 1000.0, 0.25, 1.0);
    p.perda = Arredonda(fator * alivio * (25.0 + 30.0 * (1.0 - e)));
    p.pontosVencedor = std::max<std::int64_t>(0, pontosVencedor) + p.ganho;
    p.pontosPerdedor = std::max<std::int64_t>(0, pontosPerdedor - p.perda);
    p.vencedor = AtualizaGlicko(gVencedor, gPerdedor, 1.0);
    p.perdedor = AtualizaGlicko(gPerdedor, gVencedor, 0.0);
    return p;
}

namespace {

std::vector<double> Postos(const std::vector<double>& v) {
    std::vector<std::size_t> idx(v.size());
    std::iota(idx.begin(), idx.end(), 0);
    std::sort(idx.begin(), idx.end(), [&](auto a, auto b) { return v[a] < v[b]; });
    std::vector<double> posto(v.size());
    for (std::size_t i = 0; i < idx.size();) {
        std::size_t j = i;
        while (j + 1 < idx.size() && v[idx[j + 1]] == v[idx[i]]) ++j;
        const double medio = (static_cast<double>(i) + static_cast<double>(j)) / 2.0;
        for (std::size_t k = i; k <= j; ++k) posto[idx[k]] = medio;
        i = j + 1;
    }
    return posto;
}

double Pearson(const std::vector<double>& a, const std::vector<double>& b) {
    const double n = static_cast<double>(a.size());
    const double ma = std::accumulate(a.begin(), a.end(), 0.0) / n;
    const double mb = std::accumulate(b.begin(), b.end(), 0.0) / n;
    double sab = 0, saa = 0, sbb = 0;
    for (std::size_t i = 0; i < a.size(); ++i) {
        sab += (a[i] - ma) * (b[i] - mb);
        saa += (a[i] - ma) * (a[i] - ma);
        sbb += (b[i] - mb) * (b[i] - mb);
    }
    return saa > 0 && sbb > 0 ? sab / std::sqrt(saa * sbb) : 0.0;
}

} // namespace

ResultadoSimulacao SimulaTemporada(int jogadores, int rodadas, unsigned semente) {
    std::mt19937 gerador(semente);
    std::normal_distribution<double> forcaDist(1500.0, 250.0);
    std::uniform_real_distribution<double> moeda(0.0, 1.0);
    const auto n = static_cast<std::size_t>(jogadores);
    std::vector<double> forca(n);
    for (auto& f : forca) f = forcaDist(gerador);
    std::vector<std::int64_t> pontos(n, kPontosIniciais);
    std::vector<Glicko> rating(n);
    const auto maisForte =
        static_cast<std::size_t>(std::max_element(forca.begin(), forca.end()) - forca.begin());
    ResultadoSimulacao r;
    std::vector<std::size_t> ordem(n);
    std::iota(ordem.begin(), ordem.end(), 0);
    for (int rodada = 0; rodada < rodadas; ++rodada) {
        std::shuffle(ordem.begin(), ordem.end(), gerador);
        for (std::size_t i = 0; i + 1 < n; i += 2) {
            const auto a = ordem[i], b = ordem[i + 1];
            const double pa = 1.0 / (1.0 + std::pow(10.0, (forca[b] - forca[a]) / 400.0));
            const bool aVence = moeda(gerador) < pa;
            const auto v = aVence ? a : b, p = aVence ? b : a;
            const auto premio = CalculaPremio(pontos[v], rating[v], pontos[p], rating[p], 0, false);
            pontos[v] = premio.pontosVencedor;
            pontos[p] = premio.pontosPerdedor;
            rating[v] = premio.vencedor;
            rating[p] = premio.perdedor;
        }
        if (r.jogosAteMedalha < 0 && pontos[maisForte] >= 10000) r.jogosAteMedalha = rodada + 1;
    }
    std::vector<double> pts(pontos.begin(), pontos.end());
    r.correlacaoPosto = Pearson(Postos(forca), Postos(pts));
    r.pontosMedios = std::accumulate(pts.begin(), pts.end(), 0.0) / static_cast<double>(n);
    std::vector<std::size_t> porForca(n);
    std::iota(porForca.begin(), porForca.end(), 0);
    std::sort(porForca.begin(), porForca.end(),
              [&](auto x, auto y) { return forca[x] < forca[y]; });
    for (std::size_t q = 0; q < 5; ++q) {
        double soma = 0;
        const std::size_t de = q * n / 5, ate = (q + 1) * n / 5;
        for (std::size_t k = de; k < ate; ++k) soma += static_cast<double>(pontos[porForca[k]]);
        r.pontosPorQuintil.push_back(ate > de ? std::llround(soma / static_cast<double>(ate - de))
                                              : 0);
    }
    return r;
}

} // namespace velmora::servidor
