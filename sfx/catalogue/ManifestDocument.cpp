#include "ManifestDocument.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include <QStandardPaths>
#include <QStringList>
#include <rapidjson/document.h>
#include <vemo_core/FileVersion.h>

#include "Utf8Path.h"

namespace vemo::sfx {

namespace {

// Far above any catalogue; it bounds the memory that the parsed document may take.
constexpr std::uintmax_t kLargestFile = std::uintmax_t{32} << 20U;
// A declared count up to this is taken at its word, however small the file is.
constexpr std::uintmax_t kUnquestionedCount = 65536;

[[noreturn]] void Refuse(const std::string& what) {
    throw std::runtime_error("Sound effects manifest refused: " + what);
}

const char* ListKey(audio::SfxType type) {
    return type == audio::PRIMARY ? "sfx" : "ambient";
}

const char* CountKey(audio::SfxType type) {
    return type == audio::PRIMARY ? "count" : "ambientCount";
}

std::string CountText(audio::SfxType type, int count) {
    return std::string("metadata.") + CountKey(type) + " is " + std::to_string(count);
}

} // namespace

ManifestEffect::ManifestEffect(const rapidjson::Value& value, std::string where,
                               const std::string& folder)
    : object_(value, std::move(where), Refuse), folder_(folder) {}

std::string ManifestEffect::Id() const {
    return object_.TerminatedText("id");
}
std::string ManifestEffect::Name() const {
    return object_.Text("name");
}
std::string ManifestEffect::FullPath() const {
    return folder_ + "/" + object_.TerminatedText("path");
}

std::optional<ManifestDocument> ManifestDocument::OpenInstalled() {
    const QStringList locations =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    if (locations.size() > 1) {
        // The first location is the user's own; installers write to the second.
        const std::filesystem::path folder =
            PathFromUtf8(locations[1].toStdString()) / "vemo_data/sfx";
        if (std::filesystem::exists(folder / "manifest.json")) {
            return ManifestDocument(folder);
        }
    }
    std::cout << "No SFX Manifest Found. Returning with no SFX in Manager.\n" << std::flush;
    return std::nullopt;
}

ManifestDocument::ManifestDocument(const std::filesystem::path& folder)
    : folder_(Utf8FromPath(folder)) {
    const std::filesystem::path path = folder / "manifest.json";
    if (!std::filesystem::is_regular_file(path)) {
        Refuse(Utf8FromPath(path) + " is not a file");
    }
    fileSize_ = std::filesystem::file_size(path);
    if (fileSize_ > kLargestFile) {
        Refuse(Utf8FromPath(path) + " is larger than 32 MiB");
    }
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        Refuse(Utf8FromPath(path) + " cannot be read");
    }
    std::optional<rapidjson::Document> document = ParseJson(file);
    if (!document) {
        throw std::runtime_error("Error parsing sound effects manifest");
    }
    document_ = std::make_unique<rapidjson::Document>(std::move(*document));
    if (!document_->IsObject()) {
        Refuse("the document must be an object");
    }
    const rapidjson::Value* metadata = FindMember(*document_, "metadata");
    if (metadata == nullptr) {
        throw std::runtime_error("No metadata available for sound effects");
    }
    if (!metadata->IsObject()) {
        Refuse("metadata must be an object");
    }
}

ManifestDocument::ManifestDocument(ManifestDocument&& other) noexcept = default;
ManifestDocument::~ManifestDocument() = default;

int ManifestDocument::DeclaredCount(audio::SfxType type) const {
    const rapidjson::Value* count = FindMember((*document_)["metadata"], CountKey(type));
    if (count == nullptr || !count->IsInt()) {
        Refuse(std::string("metadata.") + CountKey(type) + " must be a 32-bit integer");
    }
    return count->GetInt();
}

void ManifestDocument::ResizeToDeclaredCount(audio::SfxType type,
                                             audio::sfx::SfxVector& list) const {
    const int count = DeclaredCount(type);
    if (count < -1) {
        Refuse(CountText(type, count) + ", which is less than none");
    }
    if (count > 0 && static_cast<std::uintmax_t>(count) > std::max(fileSize_, kUnquestionedCount)) {
        Refuse(CountText(type, count) + ", more than the file can hold");
    }
    // Meant: -1 widens to the one size that the list refuses by itself.
    list.Resize(static_cast<std::size_t>(count));
}

void ManifestDocument::RequireSupportedVersion() const {
    cmn::FileVersion version(1, 0);
    const rapidjson::Value* text = FindMember((*document_)["metadata"], "version");
    if (text != nullptr && text->IsString()) {
        try {
            version = cmn::FileVersion(std::string(text->GetString(), text->GetStringLength()));
        } catch (const std::invalid_argument&) {
            version = cmn::FileVersion(0, 0);
        }
    }
    if (version < cmn::FileVersion(1, 1) || version >= cmn::FileVersion(2, 0)) {
        throw std::runtime_error("Unsupported sfx manifest version");
    }
}

void ManifestDocument::ForEachEffect(
    audio::SfxType type, const std::function<void(const ManifestEffect&)>& visit) const {
    const rapidjson::Value* list = FindMember(*document_, ListKey(type));
    if (list == nullptr) {
        throw std::runtime_error("No sound effects available");
    }
    if (!list->IsArray()) {
        Refuse(std::string(ListKey(type)) + " must be an array");
    }
    if (list->Size() > 0 && DeclaredCount(type) == 0) {
        Refuse(CountText(type, 0) + ", but " + ListKey(type) + " holds " +
               std::to_string(list->Size()) + " effects");
    }
    for (rapidjson::SizeType i = 0; i < list->Size(); ++i) {
        visit(ManifestEffect((*list)[i], std::string(ListKey(type)) + "[" + std::to_string(i) + "]",
                             folder_));
    }
}

} // namespace vemo::sfx
