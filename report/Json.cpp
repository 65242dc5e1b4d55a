#include "report/Json.h"

#include "runtime/detail/Unicode.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <string_view>

namespace tarv {
namespace {

class JsonWriter {
public:
    JsonWriter() { writer_.SetIndent(' ', 2); }

    std::string write(const InfoFacts& facts, const std::vector<FoundFile>& files, const IniTree& tree) {
        writer_.StartObject();
        writer_.Key("format");
        writer_.Int(1);
        writer_.Key("kundeninfo");
        writer_.StartObject();
        field("computername", facts.computer);
        field("betriebssystem", facts.system);
        field("betriebssystemZusatz", facts.systemExtra);
        field("betriebssystemVersion", facts.systemVersion);
        field("benutzername", facts.user);
        field("lokaleIpAdresse", facts.localAddress);
        field("windowsOrdner", facts.windowsFolder);
        writer_.EndObject();
        writer_.Key("programm");
        writer_.StartObject();
        field("ordner", facts.programFolder);
        field("version", facts.programVersion);
        writer_.EndObject();
        writer_.Key("dateien");
        writer_.StartArray();
        for (std::size_t i = 0; i < files.size(); ++i)
            file(files[i], i, tree);
        writer_.EndArray();
        writer_.EndObject();
        return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
    }

private:
    void file(const FoundFile& found, std::size_t index, const IniTree& tree) {
        writer_.StartObject();
        field("name", found.file.label);
        field("pfad", found.file.path);
        field("vorhanden", found.present);
        field("vollstaendig", !found.present || !(found.refused || tree.cut[index]));
        writer_.Key("gruppen");
        writer_.StartArray();
        for (const IniGroupNode& node : tree.groups)
            if (node.file == index)
                group(node);
        writer_.EndArray();
        writer_.EndObject();
    }

    void group(const IniGroupNode& node) {
        writer_.StartObject();
        field("name", node.name);
        field("mehrfach", node.duplicate);
        field("vollstaendig", !node.cut);
        writer_.Key("eintraege");
        writer_.StartArray();
        for (const std::wstring_view line : node.entries) {
            const auto equals = line.find(L'=');
            writer_.StartObject();
            field("name", line.substr(0, equals));
            writer_.Key("wert");
            if (equals == line.npos)
                writer_.Null();
            else
                text(line.substr(equals + 1));
            writer_.EndObject();
        }
        writer_.EndArray();
        writer_.EndObject();
    }

    void field(const char* name, std::wstring_view value) {
        writer_.Key(name);
        text(value);
    }
    void field(const char* name, bool value) {
        writer_.Key(name);
        writer_.Bool(value);
    }

    /// The writer stops at half a pair, so it gets none.
    void text(std::wstring_view value) {
        const std::string bytes = utf8(value);
        writer_.String(bytes.data(), static_cast<rapidjson::SizeType>(bytes.size()));
    }

    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_{buffer_};
};

} // namespace

std::string jsonText(const InfoFacts& facts, const std::vector<FoundFile>& files, const IniTree& tree) {
    return JsonWriter().write(facts, files, tree);
}

} // namespace tarv
