#include "NamesTable.h"

#include <fstream>
#include <vector>

#include "PathText.h"
#include "ToolError.h"

namespace vemo::tool {

namespace {

constexpr char BYTE_ORDER_MARK[] = "\xEF\xBB\xBF";

class LineReader {
public:
    LineReader(std::string text, std::string where)
        : text_(std::move(text)), where_(std::move(where)) {}

    std::vector<std::string> fields() {
        std::vector<std::string> fields;
        do {
            fields.push_back(peek_() == '"' ? quoted_() : plain_());
        } while (take_(','));
        return fields;
    }

    [[noreturn]] void fail(const std::string& what) const {
        throw ToolError(ExitCode::Usage, where_ + ": " + what);
    }

private:
    char peek_() const { return at_ < text_.size() ? text_[at_] : '\0'; }
    bool take_(char c) {
        const bool found = at_ < text_.size() && text_[at_] == c;
        at_ += found ? 1 : 0;
        return found;
    }

    std::string plain_() {
        const std::size_t end = std::min(text_.find(',', at_), text_.size());
        std::string field = text_.substr(at_, end - at_);
        at_ = end;
        return field;
    }

    std::string quoted_() {
        std::string field;
        take_('"');
        for (;;) {
            if (at_ == text_.size()) {
                fail("a quoted field is not closed");
            }
            if (!take_('"')) {
                field += text_[at_++];
            } else if (take_('"')) {
                field += '"';
            } else {
                break;
            }
        }
        if (at_ != text_.size() && peek_() != ',') {
            fail("text behind a closing quote");
        }
        return field;
    }

    std::string text_;
    std::string where_;
    std::size_t at_ = 0;
};

} // namespace

NamesTable readNames(std::istream& in, const std::string& label) {
    NamesTable table;
    std::string text;
    for (int line = 1; std::getline(in, text); ++line) {
        if (line == 1 && text.starts_with(BYTE_ORDER_MARK)) {
            text.erase(0, sizeof BYTE_ORDER_MARK - 1);
        }
        if (text.ends_with('\r')) {
            text.pop_back();
        }
        if (text.empty() || (line == 1 && text == "file,id,name")) {
            continue;
        }
        LineReader reader(text, label + ":" + std::to_string(line));
        const std::vector<std::string> fields = reader.fields();
        if (fields.size() != 3) {
            reader.fail("expected file,id,name but found " + std::to_string(fields.size()) +
                        (fields.size() == 1 ? " field" : " fields"));
        }
        if (fields[0].empty()) {
            reader.fail("the file field is empty");
        }
        const auto [row, isNew] =
            table.try_emplace(fields[0], NamesRow{fields[1], fields[2], line});
        if (!isNew) {
            reader.fail("'" + fields[0] + "' is named already in line " +
                        std::to_string(row->second.line));
        }
    }
    return table;
}

NamesTable readNames(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in || std::filesystem::is_directory(file)) {
        throw ToolError(ExitCode::Usage, pathText(file) + ": cannot be read");
    }
    return readNames(in, pathText(file));
}

} // namespace vemo::tool
