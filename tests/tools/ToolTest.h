#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <QStringList>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidjson/document.h>

#include "support/EffectMaker.h"
#include "support/Pcm.h"
#include "support/ProcessRunner.h"
#include "support/SoundFile.h"

namespace sfx_test {

using Result = ProcessRunner::Result;

QString toolPath();

/// A temporary folder to work in and the built program to run.
class ToolTest : public testing::Test {
protected:
    std::filesystem::path dir() const { return dir_.path().toStdString(); }
    /// The text form of a path below the folder.
    std::string at(const std::string& name) const { return (dir() / name).string(); }

    static Result run(const std::vector<std::string>& arguments,
                      const std::map<QString, QString>& environment = {});
    static QStringList list(const std::vector<std::string>& arguments);

    void writeVorbis(const std::string& name, const Tone& tone) const;
    void writeText(const std::string& name, const std::string& text) const;

private:
    QTemporaryDir dir_;
};

std::vector<unsigned char> readFile(const std::filesystem::path& file);
/// Relative path and content of every file below `folder`.
std::map<std::string, std::vector<unsigned char>> contentOf(const std::filesystem::path& folder);
rapidjson::Document parse(const QByteArray& json);

/// Left with `code`, and one line on stderr that holds `text`.
testing::Matcher<const Result&> failedWith(int code, const std::string& text);

} // namespace sfx_test
