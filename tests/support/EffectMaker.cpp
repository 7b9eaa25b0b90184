#include "EffectMaker.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>

#include <vorbis/vorbisenc.h>

namespace sfx_test {

namespace {

class VorbisEncoder {
public:
    VorbisEncoder(int channels, int rate, float quality) {
        vorbis_info_init(&info_);
        if (vorbis_encode_init_vbr(&info_, channels, rate, quality) != 0) {
            vorbis_info_clear(&info_);
            throw std::runtime_error("Vorbis refuses " + std::to_string(channels) +
                                     " channels at " + std::to_string(rate) + " Hz");
        }
        vorbis_comment_init(&comment_);
        vorbis_analysis_init(&dsp_, &info_);
        vorbis_block_init(&dsp_, &block_);
        ogg_stream_init(&stream_, 1);
    }
    ~VorbisEncoder() {
        ogg_stream_clear(&stream_);
        vorbis_block_clear(&block_);
        vorbis_dsp_clear(&dsp_);
        vorbis_comment_clear(&comment_);
        vorbis_info_clear(&info_);
    }
    VorbisEncoder(const VorbisEncoder&) = delete;
    VorbisEncoder& operator=(const VorbisEncoder&) = delete;

    std::vector<unsigned char> Encode(const Pcm& pcm) {
        WriteHeaders();
        constexpr std::size_t kChunk = 1024;
        for (std::size_t begin = 0; begin < pcm.Frames(); begin += kChunk) {
            const std::size_t frames = std::min(kChunk, pcm.Frames() - begin);
            float** planes = vorbis_analysis_buffer(&dsp_, static_cast<int>(frames));
            for (std::size_t i = 0; i < frames; ++i) {
                for (int channel = 0; channel < pcm.channels; ++channel) {
                    planes[channel][i] = pcm.At(begin + i, channel);
                }
            }
            Submit(static_cast<int>(frames));
        }
        Submit(0);
        return std::move(bytes_);
    }

private:
    void WriteHeaders() {
        ogg_packet identification;
        ogg_packet comments;
        ogg_packet codebooks;
        vorbis_analysis_headerout(&dsp_, &comment_, &identification, &comments, &codebooks);
        ogg_stream_packetin(&stream_, &identification);
        ogg_stream_packetin(&stream_, &comments);
        ogg_stream_packetin(&stream_, &codebooks);
        for (ogg_page page; ogg_stream_flush(&stream_, &page) != 0;) {
            Append(page);
        }
    }

    // 0 frames end the stream; the encoder then notes the true length in the last page.
    void Submit(int frames) {
        vorbis_analysis_wrote(&dsp_, frames);
        while (vorbis_analysis_blockout(&dsp_, &block_) == 1) {
            vorbis_analysis(&block_, nullptr);
            vorbis_bitrate_addblock(&block_);
            for (ogg_packet packet; vorbis_bitrate_flushpacket(&dsp_, &packet) != 0;) {
                ogg_stream_packetin(&stream_, &packet);
                for (ogg_page page; ogg_stream_pageout(&stream_, &page) != 0;) {
                    Append(page);
                }
            }
        }
    }

    void Append(const ogg_page& page) {
        bytes_.insert(bytes_.end(), page.header, page.header + page.header_len);
        bytes_.insert(bytes_.end(), page.body, page.body + page.body_len);
    }

    vorbis_info info_;
    vorbis_comment comment_;
    vorbis_dsp_state dsp_;
    vorbis_block block_;
    ogg_stream_state stream_;
    std::vector<unsigned char> bytes_;
};

} // namespace

std::vector<unsigned char> EncodeVorbis(const Pcm& pcm, float quality) {
    return VorbisEncoder(pcm.channels, pcm.rate, quality).Encode(pcm);
}

std::vector<unsigned char> Encipher(std::vector<unsigned char> bytes) {
    for (unsigned char& byte : bytes) {
        byte ^= 0xA5U;
    }
    return bytes;
}

void WriteBytes(const std::filesystem::path& path, const std::vector<unsigned char>& bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

std::string FileUrl(const QString& path) {
    return QUrl::fromLocalFile(path).toString().toStdString();
}

std::string InstallFolder::AddEffect(const std::string& id, const std::string& name,
                                     const Pcm& pcm) {
    return Add(effects_, id, name, pcm);
}

std::string InstallFolder::AddAmbient(const std::string& id, const std::string& name,
                                      const Pcm& pcm) {
    return Add(ambients_, id, name, pcm);
}

std::string InstallFolder::Add(std::vector<Entry>& list, const std::string& id,
                               const std::string& name, const Pcm& pcm) {
    const std::string file = "files/" + std::to_string(effects_.size() + ambients_.size()) + ".sfx";
    WriteBytes(Path() / file, Encipher(EncodeVorbis(pcm)));
    list.push_back({id, name, file});
    const std::u8string path = (Path() / file).u8string();
    return {path.begin(), path.end()};
}

void InstallFolder::Publish() {
    const auto asJson = [](const std::vector<Entry>& list) {
        QJsonArray array;
        for (const Entry& entry : list) {
            array.append(QJsonObject{{"id", QString::fromStdString(entry.id)},
                                     {"name", QString::fromStdString(entry.name)},
                                     {"path", QString::fromStdString(entry.file)}});
        }
        return array;
    };
    const QJsonObject metadata{{"version", "1.1"},
                               {"count", static_cast<int>(effects_.size())},
                               {"ambientCount", static_cast<int>(ambients_.size())}};
    const QByteArray text = QJsonDocument(QJsonObject{{"metadata", metadata},
                                                      {"sfx", asJson(effects_)},
                                                      {"ambient", asJson(ambients_)}})
                                .toJson();
    WriteBytes(Path() / "manifest.json", {text.begin(), text.end()});
    root_.Publish();
}

} // namespace sfx_test
