#include "ToolTest.h"

#include <fstream>
#include <iterator>

#include <sfx/catalogue/Utf8Path.h>

namespace sfx_test {

namespace fs = std::filesystem;
using vemo::sfx::PathFromUtf8;
using vemo::sfx::Utf8FromPath;

QString toolPath() {
    return QStringLiteral(VEMO_SFX);
}

Result ToolTest::run(const std::vector<std::string>& arguments,
                     const std::map<QString, QString>& environment) {
    return ProcessRunner::Run(toolPath(), list(arguments), environment, 3 * kDeadline);
}

std::string ToolTest::at(const std::string& name) const {
    return Utf8FromPath((dir() / pathOf(name)).make_preferred());
}

fs::path ToolTest::pathOf(const std::string& text) {
    return PathFromUtf8(text);
}

std::string ToolTest::onStage(const std::string& install) {
#ifdef _WIN32
    if (!stage_) {
        stage_.emplace();
        for (const auto& [name, bytes] : contentOf(dir() / pathOf(install))) {
            WriteBytes(stage_->Install() / pathOf(name), bytes);
        }
    }
    return Utf8FromPath(fs::path(stage_->Install()).make_preferred());
#else
    return at(install);
#endif
}

QStringList ToolTest::list(const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments) {
        list << QString::fromStdString(argument);
    }
    return list;
}

void ToolTest::writeVorbis(const std::string& name, const Tone& tone) const {
    WriteBytes(dir() / pathOf(name), EncodeVorbis(MakeTone(tone)));
}

void ToolTest::writeText(const std::string& name, const std::string& text) const {
    WriteBytes(dir() / pathOf(name), {text.begin(), text.end()});
}

std::vector<unsigned char> readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::map<std::string, std::vector<unsigned char>> contentOf(const fs::path& folder) {
    std::map<std::string, std::vector<unsigned char>> content;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        content[Utf8FromPath(entry.path().lexically_relative(folder).generic_u8string())] =
            entry.is_regular_file() ? readFile(entry.path()) : std::vector<unsigned char>{};
    }
    return content;
}

rapidjson::Document parse(const QByteArray& json) {
    rapidjson::Document document;
    document.Parse(json.constData(), static_cast<std::size_t>(json.size()));
    EXPECT_FALSE(document.HasParseError()) << json.toStdString();
    return document;
}

testing::Matcher<const Result&> failedWith(int code, const std::string& text) {
    using namespace testing;
    const auto asText = [](const QByteArray& bytes) { return bytes.toStdString(); };
    return AllOf(Field("exitCode", &Result::exitCode, code),
                 Field("err", &Result::err,
                       ResultOf(asText, AllOf(StartsWith("vemo-sfx: "), HasSubstr(text),
                                              ResultOf(
                                                  [](const std::string& s) {
                                                      return std::count(s.begin(), s.end(), '\n');
                                                  },
                                                  1)))));
}

} // namespace sfx_test
