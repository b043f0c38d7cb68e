#pragma once
// dl: the invisible control that fetches web documents and files over
// QNetworkAccessManager, as blocking calls that let events run while they wait. Each read
// goes to a temporary file and is moved to its target when it ends; the time-out counts
// from the last progress, so a slow transfer that keeps moving never times out.
//
// Status: 0 running, 1 complete, 2 cancelled, 3 timed out or short. Once a wait has timed
// out the instance ignores every later event of its reads, for good.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace velmora {

// Anything that shows a percentage: a progress bar.
class ObjetoProgresso {
  public:
    virtual ~ObjetoProgresso() = default;
    virtual void Value(std::int32_t valor) = 0;
};

class dl {
    struct Estado;
    // Shared with the waits and the reads, so that the control may end while one waits;
    // declared first, since the event members below refer into it
    std::shared_ptr<Estado> e_;

  public:
    dl();
    ~dl();
    dl(const dl&) = delete;
    dl& operator=(const dl&) = delete;

    // Events: each progress report of a read, and the end of a read with its file in place.
    std::function<void(std::int64_t DownLoadedBytes, std::int64_t TotalBytes,
                       const std::string& sID)>& Progress;
    std::function<void(std::int64_t Bytes, const std::string& sID)>& Completed;
    // The clock (seconds) and the pump of the waits; RelogioPadrao and BombaPadrao at first.
    std::function<double()>& Relogio;
    std::function<void()>& Bomba;

    // The document as text, each line followed by CR LF; empty on a time-out. Every fetch
    // of the process passes through the one file ArquivoConteudo().
    std::string GetConteudo(const std::string& sWWWFile, const std::string& sID = "Id",
                            std::int32_t TimeOut = 8);
    // Fetches a file to `sDestination`, showing Percent on `objprogress` (may be null);
    // the result is the Status.
    std::int16_t Download(const std::string& sWWWFile, const std::string& sDestination,
                          ObjetoProgresso* objprogress, const std::string& sID = "Id",
                          std::int32_t TimeOut = 8);
    // Stops the reads under `sID`; Status 2.
    void CancelDownload(const std::string& sID);

    std::int16_t Status() const;
    std::int32_t Percent() const;
    bool Cancelled() const;

    // "temp01.dat" in the user's temporary folder.
    static std::filesystem::path ArquivoConteudo();

  private:
    void AsyncRead(const std::string& url, const std::string& chave);
};

} // namespace velmora
