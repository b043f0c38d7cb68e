#include "server/rede.h"

#include "server/nickrelay.h"

#include <asio.hpp>

#include <array>
#include <chrono>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <unordered_map>
#include <unordered_set>

namespace velmora::servidor {

using asio::ip::tcp;
using Relogio = std::chrono::steady_clock;

namespace {

std::chrono::steady_clock::duration Segundos(double s) {
    return std::chrono::duration_cast<std::chrono::steady_clock::duration>(
        std::chrono::duration<double>(s));
}

std::string TextoEndereco(const asio::ip::address& a) {
    if (a.is_v6() && a.to_v6().is_v4_mapped())
        return asio::ip::make_address_v4(asio::ip::v4_mapped, a.to_v6()).to_string();
    return a.to_string();
}

const char* TextoStatus(int s) {
    switch (s) {
    case 200:
        return "OK";
    case 400:
        return "Bad Request";
    case 404:
        return "Not Found";
    case 500:
        return "Internal Server Error";
    case 503:
        return "Service Unavailable";
    default:
        return "OK";
    }
}

} // namespace

class ConexaoWeb;
class LadoRelay;

struct Servidor::Estado {
    const Opcoes& o;
    Servico& servico;
    Registro log;
    asio::io_context io;
    asio::thread_pool trabalhadores;
    tcp::acceptor web{io};
    tcp::acceptor relay{io};
    std::thread linha;
    std::atomic<std::size_t> conexoesWeb{0};
    std::atomic<std::size_t> fila{0};
    std::atomic<std::size_t> sondas{0};
    std::atomic<std::size_t> conexoesRelay{0};
    std::atomic<std::size_t> pares{0};
    std::atomic<bool> parando{false};
    // Relay state: touched only on the socket thread
    std::unordered_map<std::string, std::deque<std::weak_ptr<LadoRelay>>> espera;
    std::unordered_map<std::string, std::size_t> porEndereco;
    std::unordered_set<LadoRelay*> lados;
    std::mutex mutexLog;

    Estado(const Opcoes& op, Servico& s, Registro l)
        : o(op), servico(s), log(std::move(l)),
          trabalhadores(static_cast<std::size_t>(std::max(1, op.trabalhadores))) {}

    void Log(const std::string& linha) {
        if (!log) return;
        std::lock_guard trava(mutexLog);
        log(linha);
    }
    void AceitaWeb();
    void AceitaRelay();
};

// One web connection: read one request (bounded in size and time), answer, close.
class ConexaoWeb : public std::enable_shared_from_this<ConexaoWeb> {
  public:
    ConexaoWeb(Servidor::Estado& e, tcp::socket s)
        : e_(e), socket_(std::move(s)), prazo_(e.io), inicio_(Relogio::now()) {
        ++e_.conexoesWeb;
    }
    ~ConexaoWeb() { --e_.conexoesWeb; }

    void Comeca() {
        asio::error_code ec;
        const auto remoto = socket_.remote_endpoint(ec);
        if (ec) return;
        endereco_ = TextoEndereco(remoto.address());
        ArmaPrazo(e_.o.tempoPedido);
        Le();
    }

  private:
    void ArmaPrazo(double s) {
        prazo_.expires_after(Segundos(s));
        prazo_.async_wait([self = shared_from_this()](const asio::error_code& ec) {
            if (ec) return;
            asio::error_code ignora;
            self->socket_.close(ignora);
        });
    }

    void Le() {
        socket_.async_read_some(asio::buffer(buf_), [self = shared_from_this()](
                                                        const asio::error_code& ec, std::size_t n) {
            if (ec) return;
            self->recebido_.append(self->buf_.data(), n);
            const auto l = LePedido(self->recebido_);
            if (l.estado == Leitura::Incompleto) return self->Le();
            if (l.estado == Leitura::Invalido) {
                Resposta r;
                r.status = 400;
                r.corpo = "Pedido inválido";
                const bool http = self->recebido_.find(" HTTP/1.") != std::string::npos;
                self->drena_ = true;
                return self->Escreve(http ? FormaPedido::Http : FormaPedido::Nua, false, r, "-");
            }
            self->Atende(l.pedido);
        });
    }

    void Atende(const Pedido& p) {
        prazo_.cancel();
        ArmaPrazo(30.0);
        std::string endereco = endereco_;
        if (!e_.o.proxy.empty() && endereco == e_.o.proxy && !p.encaminhadoPor.empty()) {
            // Behind our own proxy the caller is the last address it added
            std::string ultimo = p.encaminhadoPor.substr(p.encaminhadoPor.rfind(',') + 1);
            while (!ultimo.empty() && ultimo.front() == ' ') ultimo.erase(0, 1);
            asio::error_code ec;
            const auto a = asio::ip::make_address(ultimo, ec);
            if (!ec) endereco = TextoEndereco(a);
        }
        endereco_ = endereco;
        const bool cabeca = p.metodo == "HEAD";
        const auto forma = p.forma;
        const auto resumo = Servico::Resumo(p);
        if (Servico::EhTestePorta(p)) return TestaPorta(p, forma, cabeca, resumo);
        if (e_.fila >= e_.o.maxFila) {
            Resposta r;
            r.status = 503;
            r.corpo = "Servidor ocupado";
            return Escreve(forma, cabeca, r, resumo);
        }
        ++e_.fila;
        asio::post(e_.trabalhadores,
                   [self = shared_from_this(), p, forma, cabeca, resumo]() mutable {
                       Resposta r = self->e_.servico.Responde(p, self->endereco_);
                       --self->e_.fila;
                       // The connection goes back whole to the socket thread, which alone lets it
                       // go
                       auto& io = self->e_.io;
                       asio::post(io, [self = std::move(self), r = std::move(r), forma, cabeca,
                                       resumo] { self->Escreve(forma, cabeca, r, resumo); });
                   });
    }

    // The service dials the caller's own address on the port asked, with a short deadline
    void TestaPorta(const Pedido& p, FormaPedido forma, bool cabeca, const std::string& resumo) {
        const auto prep = e_.servico.PreparaTestePorta(p, endereco_);
        Resposta r;
        if (!prep.resposta.empty() || e_.sondas >= 64) {
            r.corpo = prep.resposta.empty() ? "RESP:Ocupado" : prep.resposta;
            return Escreve(forma, cabeca, r, resumo);
        }
        asio::error_code ec;
        const auto alvo = asio::ip::make_address(endereco_, ec);
        if (ec) {
            r.corpo = "RESP:Offline";
            return Escreve(forma, cabeca, r, resumo);
        }
        ++e_.sondas;
        struct Sonda {
            tcp::socket s;
            asio::steady_timer t;
            bool feito = false;
        };
        auto sonda = std::make_shared<Sonda>(Sonda{tcp::socket(e_.io), asio::steady_timer(e_.io)});
        auto self = shared_from_this();
        auto fim = [self, sonda, forma, cabeca, resumo](bool online) {
            if (sonda->feito) return;
            sonda->feito = true;
            --self->e_.sondas;
            asio::error_code ignora;
            sonda->t.cancel();
            sonda->s.close(ignora);
            Resposta r;
            r.corpo = online ? "RESP:Online" : "RESP:Offline";
            self->Escreve(forma, cabeca, r, resumo);
        };
        sonda->t.expires_after(Segundos(e_.o.tempoSonda));
        sonda->t.async_wait([fim](const asio::error_code& e) {
            if (!e) fim(false);
        });
        sonda->s.async_connect(tcp::endpoint(alvo, prep.porta),
                               [fim](const asio::error_code& e) { fim(!e); });
    }

    void Escreve(FormaPedido forma, bool cabeca, const Resposta& r, const std::string& resumo) {
        auto texto = std::make_shared<std::string>();
        if (forma == FormaPedido::Nua) {
            // The bare form: the reply text alone, in one write
            *texto = r.corpo;
        } else {
            *texto = "HTTP/1.1 " + std::to_string(r.status) + " " + TextoStatus(r.status) +
                     "\r\nContent-Type: " + r.tipo +
                     "\r\nContent-Length: " + std::to_string(r.corpo.size()) +
                     "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff"
                     "\r\nConnection: close\r\n\r\n";
            if (!cabeca) *texto += r.corpo;
        }
        const auto ms =
            std::chrono::duration_cast<std::chrono::milliseconds>(Relogio::now() - inicio_).count();
        e_.Log(endereco_ + " " + (forma == FormaPedido::Nua ? "nua" : "http") + " " + resumo + " " +
               std::to_string(r.status) + " " + std::to_string(r.corpo.size()) + "B " +
               std::to_string(ms) + "ms");
        asio::async_write(socket_, asio::buffer(*texto),
                          [self = shared_from_this(), texto](const asio::error_code&, std::size_t) {
                              asio::error_code ignora;
                              if (self->drena_) {
                                  // A refused request may still be arriving: read and drop
                                  // a little of it first, so the answer isn't lost to a reset
                                  self->socket_.shutdown(tcp::socket::shutdown_send, ignora);
                                  self->prazo_.cancel();
                                  self->ArmaPrazo(1.0);
                                  return self->Drena(0);
                              }
                              self->socket_.shutdown(tcp::socket::shutdown_both, ignora);
                              self->socket_.close(ignora);
                              self->prazo_.cancel();
                          });
    }

    void Drena(std::size_t lidos) {
        socket_.async_read_some(asio::buffer(buf_), [self = shared_from_this(), lidos](
                                                        const asio::error_code& ec, std::size_t n) {
            if (ec || lidos + n > 65536) {
                asio::error_code ignora;
                self->socket_.close(ignora);
                self->prazo_.cancel();
                return;
            }
            self->Drena(lidos + n);
        });
    }

    Servidor::Estado& e_;
    tcp::socket socket_;
    asio::steady_timer prazo_;
    Relogio::time_point inicio_;
    std::string endereco_;
    std::array<char, 2048> buf_{};
    std::string recebido_;
    bool drena_ = false;
};

// One side of the relay. It reads the copy's first message, waits in the list of its
// group, and once paired passes every byte to the other side unchanged.
class LadoRelay : public std::enable_shared_from_this<LadoRelay> {
  public:
    LadoRelay(Servidor::Estado& e, tcp::socket s, std::string endereco)
        : e_(e), socket_(std::move(s)), prazo_(e.io), assenta_(e.io),
          endereco_(std::move(endereco)) {
        ++e_.conexoesRelay;
        ++e_.porEndereco[endereco_];
        e_.lados.insert(this);
    }
    ~LadoRelay() {
        --e_.conexoesRelay;
        e_.lados.erase(this);
        if (auto it = e_.porEndereco.find(endereco_);
            it != e_.porEndereco.end() && --it->second == 0)
            e_.porEndereco.erase(it);
    }

    void Comeca() {
        ArmaPrazo(e_.o.tempoNick);
        Le();
    }

    void Fecha() {
        if (fechado_) return;
        fechado_ = true;
        asio::error_code ignora;
        prazo_.cancel();
        assenta_.cancel();
        socket_.shutdown(tcp::socket::shutdown_both, ignora);
        socket_.close(ignora);
        if (estado_ == Estado::Esperando) TiraDaEspera();
        if (estado_ == Estado::Pareado) --e_.pares;
        estado_ = Estado::Fechado;
        if (auto o = std::move(outro_)) o->Fecha();
    }

  private:
    enum class Estado { LendoNick, Esperando, Pareado, Fechado };

    void ArmaPrazo(double s) {
        prazo_.expires_after(Segundos(s));
        prazo_.async_wait([self = shared_from_this()](const asio::error_code& ec) {
            if (!ec) self->Fecha();
        });
    }

    // One read at a time; a call while one is pending does nothing
    void Le() {
        if (fechado_ || lendo_) return;
        lendo_ = true;
        socket_.async_read_some(asio::buffer(buf_), [self = shared_from_this()](
                                                        const asio::error_code& ec, std::size_t n) {
            self->lendo_ = false;
            if (ec) return self->Fecha();
            self->Recebe(std::string_view(self->buf_.data(), n));
        });
    }

    void Recebe(std::string_view dados) {
        switch (estado_) {
        case Estado::LendoNick: {
            inicio_.append(dados);
            const auto l = LeNickRelay(inicio_);
            if (l.estado == Leitura::Invalido) return Fecha();
            if (l.estado == Leitura::Incompleto) assenta_.cancel();
            if (l.estado == Leitura::Completo) {
                // A group text may itself hold "A#": wait a moment for a later segment
                // before taking the message as whole
                nick_ = l.nick;
                assenta_.expires_after(Segundos(e_.o.tempoAssenta));
                assenta_.async_wait([self = shared_from_this()](const asio::error_code& ec) {
                    if (!ec && self->estado_ == Estado::LendoNick) self->Pareia();
                });
            }
            return Le();
        }
        case Estado::Esperando:
            // Nothing should come before a partner; keep a little, in order
            pendente_.append(dados);
            if (pendente_.size() > 4096) return Fecha();
            return Le();
        case Estado::Pareado: {
            ArmaPrazo(e_.o.tempoOcioso);
            if (outro_) {
                outro_->prazo_.cancel();
                outro_->ArmaPrazo(e_.o.tempoOcioso);
            }
            auto self = shared_from_this();
            if (!outro_) return Fecha();
            return outro_->Envia(std::string(dados), [self] { self->Le(); });
        }
        case Estado::Fechado:
            return;
        }
    }

    std::string Chave() const { return nick_.grupo + '\x1f' + nick_.compatibilidade; }

    void Pareia() {
        auto& fila = e_.espera[Chave()];
        std::shared_ptr<LadoRelay> antes;
        while (!fila.empty() && !antes) {
            antes = fila.front().lock();
            fila.pop_front();
            if (antes && (antes.get() == this || antes->estado_ != Estado::Esperando))
                antes.reset();
        }
        if (fila.empty()) e_.espera.erase(Chave());
        if (!antes) {
            estado_ = Estado::Esperando;
            e_.espera[Chave()].push_back(weak_from_this());
            prazo_.cancel();
            ArmaPrazo(e_.o.tempoEsperaRelay);
            return Le();
        }
        // The earlier copy receives the later one's "Nick:" and so becomes the server
        auto self = shared_from_this();
        outro_ = antes;
        antes->outro_ = self;
        estado_ = Estado::Pareado;
        antes->estado_ = Estado::Pareado;
        e_.pares += 2; // one for each side, taken back as each closes
        prazo_.cancel();
        antes->prazo_.cancel();
        ArmaPrazo(e_.o.tempoOcioso);
        antes->ArmaPrazo(e_.o.tempoOcioso);
        antes->Envia(std::move(inicio_), [self] { self->Le(); });
        if (!antes->pendente_.empty()) Envia(std::move(antes->pendente_), [] {});
        // Its read is still pending and now forwards to us
        e_.Log(antes->endereco_ + " relay par com " + endereco_ +
               (nick_.grupo.empty() ? " (estranhos)" : " (grupo)"));
        auto& s = e_.servico;
        asio::post(e_.trabalhadores, [&s, a = antes->nick_, ea = antes->endereco_, b = nick_,
                                      eb = endereco_] { s.RegistraParRelay(a, ea, b, eb); });
    }

    void TiraDaEspera() {
        const auto it = e_.espera.find(Chave());
        if (it == e_.espera.end()) return;
        std::erase_if(it->second, [this](const std::weak_ptr<LadoRelay>& w) {
            const auto p = w.lock();
            return !p || p.get() == this;
        });
        if (it->second.empty()) e_.espera.erase(it);
    }

    // Writes in order; `pronto` runs once these bytes are out (the sender then reads on)
    void Envia(std::string dados, std::function<void()> pronto) {
        if (fechado_) return;
        saida_.push_back({std::move(dados), std::move(pronto)});
        if (saida_.size() == 1) EscreveProximo();
    }

    void EscreveProximo() {
        auto self = shared_from_this();
        asio::async_write(socket_, asio::buffer(saida_.front().dados),
                          [self](const asio::error_code& ec, std::size_t) {
                              if (ec || self->fechado_) return self->Fecha();
                              auto pronto = std::move(self->saida_.front().pronto);
                              self->saida_.pop_front();
                              if (!self->saida_.empty()) self->EscreveProximo();
                              if (pronto) pronto();
                          });
    }

    struct Saida {
        std::string dados;
        std::function<void()> pronto;
    };

    Servidor::Estado& e_;
    tcp::socket socket_;
    asio::steady_timer prazo_;
    asio::steady_timer assenta_;
    std::string endereco_;
    Estado estado_ = Estado::LendoNick;
    bool fechado_ = false;
    bool lendo_ = false;
    std::string inicio_;
    std::string pendente_;
    NickRelay nick_;
    std::shared_ptr<LadoRelay> outro_;
    std::deque<Saida> saida_;
    std::array<char, 4096> buf_{};
};

void Servidor::Estado::AceitaWeb() {
    web.async_accept([this](const asio::error_code& ec, tcp::socket s) {
        if (ec == asio::error::operation_aborted || parando) return;
        if (!ec) {
            if (conexoesWeb >= o.maxConexoes) {
                asio::error_code ignora;
                s.close(ignora);
            } else {
                std::make_shared<ConexaoWeb>(*this, std::move(s))->Comeca();
            }
        }
        AceitaWeb();
    });
}

void Servidor::Estado::AceitaRelay() {
    relay.async_accept([this](const asio::error_code& ec, tcp::socket s) {
        if (ec == asio::error::operation_aborted || parando) return;
        if (!ec) {
            asio::error_code e2;
            const auto remoto = s.remote_endpoint(e2);
            const std::string endereco = e2 ? std::string{} : TextoEndereco(remoto.address());
            const auto it = porEndereco.find(endereco);
            const std::size_t deste = it == porEndereco.end() ? 0 : it->second;
            if (e2 || conexoesRelay >= o.maxRelay || deste >= o.maxRelayPorEndereco) {
                asio::error_code ignora;
                s.close(ignora);
            } else {
                s.set_option(tcp::no_delay(true), e2);
                std::make_shared<LadoRelay>(*this, std::move(s), endereco)->Comeca();
            }
        }
        AceitaRelay();
    });
}

Servidor::Servidor(const Opcoes& o, Servico& servico, Registro log)
    : e_(std::make_unique<Estado>(o, servico, std::move(log))) {}

Servidor::~Servidor() {
    Para();
}

void Servidor::Abre() {
    const auto abre = [](tcp::acceptor& a, const std::string& endereco, std::uint16_t porta) {
        const tcp::endpoint ep(asio::ip::make_address(endereco), porta);
        a.open(ep.protocol());
        a.set_option(tcp::acceptor::reuse_address(true));
        a.bind(ep);
        a.listen(asio::socket_base::max_listen_connections);
    };
    abre(e_->web, e_->o.endereco, e_->o.porta);
    abre(e_->relay, e_->o.EnderecoRelay(), e_->o.portaRelay);
    e_->servico.DefinePortas(PortaWeb(), PortaRelay());
}

std::uint16_t Servidor::PortaWeb() const {
    return e_->web.local_endpoint().port();
}
std::uint16_t Servidor::PortaRelay() const {
    return e_->relay.local_endpoint().port();
}
std::size_t Servidor::ConexoesRelay() const {
    return e_->conexoesRelay;
}
std::size_t Servidor::ParesRelay() const {
    return e_->pares / 2;
}
std::size_t Servidor::ConexoesWeb() const {
    return e_->conexoesWeb;
}

void Servidor::Inicia() {
    e_->AceitaWeb();
    e_->AceitaRelay();
    e_->linha = std::thread([this] {
        auto guarda = asio::make_work_guard(e_->io);
        e_->io.run();
    });
}

void Servidor::Para() {
    if (!e_ || !e_->linha.joinable()) return;
    e_->parando = true;
    asio::post(e_->io, [this] {
        asio::error_code ignora;
        e_->web.close(ignora);
        e_->relay.close(ignora);
    });
    // Requests in progress finish and are answered
    const auto limite = Relogio::now() + std::chrono::seconds(5);
    while ((e_->conexoesWeb > 0 || e_->fila > 0) && Relogio::now() < limite)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    std::promise<void> fechados;
    asio::post(e_->io, [this, &fechados] {
        std::vector<std::shared_ptr<LadoRelay>> todos;
        for (auto* l : e_->lados) todos.push_back(l->shared_from_this());
        for (auto& l : todos) l->Fecha();
        fechados.set_value();
    });
    fechados.get_future().wait_for(std::chrono::seconds(5));
    e_->io.stop();
    e_->linha.join();
    e_->trabalhadores.join();
}

} // namespace velmora::servidor
