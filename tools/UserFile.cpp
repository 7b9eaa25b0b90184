#include "UserFile.h"

#include <QFileInfo>
#include <QUrl>

#include "ToolError.h"

namespace vemo::tool {

std::optional<std::string> userFileUrl(const std::string& pathOrUrl) {
    const QString text = QString::fromStdString(pathOrUrl);
    const QFileInfo file(text);
    if (file.isFile()) {
        return QUrl::fromLocalFile(file.absoluteFilePath())
            .toString(QUrl::FullyEncoded)
            .toStdString();
    }
    const QUrl url(text, QUrl::StrictMode);
    if (!text.contains(QStringLiteral("://")) || !url.isValid() ||
        (url.isLocalFile() && !QFileInfo(url.toLocalFile()).isFile())) {
        return std::nullopt;
    }
    return pathOrUrl;
}

audio::CustomAudioParameters userFile(const std::string& pathOrUrl, SoundOptions options) {
    const auto url = userFileUrl(pathOrUrl);
    if (!url) {
        throw ToolError(ExitCode::Refused, "no file " + pathOrUrl);
    }
    options.complete();
    return audio::CustomAudioParameters::builder()
        .name(QString::fromStdString(pathOrUrl))
        .file(QString::fromStdString(*url))
        .repeats(options.repeats.value_or(0))
        .fadeIn(*options.fadeIn)
        .fadeOut(*options.fadeOut)
        .volume(*options.volume)
        .reverb(*options.reverb)
        .pan(*options.pan)
        .build();
}

} // namespace vemo::tool
