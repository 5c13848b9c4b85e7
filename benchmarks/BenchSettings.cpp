#include "benchmarks/Bench.h"
#include "benchmarks/Median.h"
#include "quor/settings/ZTSettingsLibrary.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

constexpr std::size_t kBytes = 50'000'000;

// The shape that the library itself writes: preferences, exchanges, sides, entries. Returns how many preferences.
int writeSettings(const std::string& path) {
    std::ofstream file(path, std::ios::binary);
    std::size_t written = 0;
    int preferences = 0;
    for (file << "{\n"; written < kBytes; ++preferences) {
        std::string text =
            (preferences ? ",\n" : "") + std::string("    \"PREF") + std::to_string(preferences) + "\": {\n";
        for (const char* exchange : {"NSE", "BSE", "MCX", "ALL"}) {
            text += std::string("        \"") + exchange + "\": {\n";
            for (const char* side : {"BUY", "SELL", "ALL"}) {
                text += std::string("            \"") + side + "\": {\n";
                for (int entry = 0; entry < 8; ++entry)
                    text += "                \"key" + std::to_string(entry) + "\": \"" + exchange + " " + side + " " +
                            std::to_string(preferences * 8 + entry) + (entry < 7 ? "\",\n" : "\"\n");
                text += side[0] == 'A' ? "            }\n" : "            },\n";
            }
            text += exchange[0] == 'A' ? "        }\n" : "        },\n";
        }
        file << text << "    }";
        written += text.size() + 5;
    }
    file << "\n}\n";
    return preferences;
}

}  // namespace

void benchSettings(Figures& figures) {
    const std::string path = (std::filesystem::temp_directory_path() / "quor-bench-settings.json").string();
    const int preferences = writeSettings(path);
    CZTSettingsLibrary library;
    const double seconds = medianSeconds(3, [&] { library.setPath(path.c_str()); });
    std::filesystem::remove(path);
    CString value;
    const CString last = ("PREF" + std::to_string(preferences - 1)).c_str();
    const std::string expected = "MCX SELL " + std::to_string((preferences - 1) * 8 + 7);
    if (!library.getChildSetting(last, "MCX", "SELL", "key7", value) || expected != value.GetString())
        throw std::runtime_error("the settings were not read");
    figures.push_back(
        {"settings_read_50mb_ms", seconds * 1e3, "ms", "setPath on a well-formed file of 50 MB; median of 3", 3000, 0});
}
