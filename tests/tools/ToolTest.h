#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/EffectMaker.h"
#include "support/InstallRoot.h"
#include "support/Pcm.h"
#include "support/ProcessRunner.h"
#include "support/SoundFile.h"

namespace sfx_test {

using Result = ProcessRunner::Result;

#ifdef _WIN32
inline constexpr bool ON_WINDOWS = true;
#else
inline constexpr bool ON_WINDOWS = false;
#endif

QString toolPath();

/// A temporary folder to work in and the built program to run.
class ToolTest : public testing::Test {
protected:
    std::filesystem::path dir() const { return pathOf(dir_.path().toStdString()); }
    /// The text form of a path below the folder, as users write it on the system.
    std::string at(const std::string& name) const;
    static std::filesystem::path pathOf(const std::string& text);
    /// The install below the folder, where shows play from: on Windows a copy in the library's own
    /// place, for which other test programs wait until the test is over.
    std::string onStage(const std::string& install);

    static Result run(const std::vector<std::string>& arguments,
                      const std::map<QString, QString>& environment = {});
    static QStringList list(const std::vector<std::string>& arguments);

    void writeVorbis(const std::string& name, const Tone& tone) const;
    void writeText(const std::string& name, const std::string& text) const;

private:
    QTemporaryDir dir_{QDir::tempPath() + QString::fromUtf8("/vemo-Bühne-♪-XXXXXX")};
#ifdef _WIN32
    std::optional<InstallRoot> stage_;
#endif
};

std::vector<unsigned char> readFile(const std::filesystem::path& file);
/// Relative path and content of every file below `folder`.
std::map<std::string, std::vector<unsigned char>> contentOf(const std::filesystem::path& folder);
rapidjson::Document parse(const QByteArray& json);

/// Left with `code`, and one line on stderr that holds `text`.
testing::Matcher<const Result&> failedWith(int code, const std::string& text);

} // namespace sfx_test
