#include "host/TerminalRun.h"

#include "host/core/Simulator.h"
#include "host/core/Tape.h"
#include "host/core/Utf8.h"
#include "host/core/WatchStore.h"
#include "host/panes/HostEntries.h"
#include "host/panes/LogPane.h"
#include "quor/list/CommonListCtrl.h"

#include <filesystem>
#include <system_error>

namespace terminal {

namespace {
constexpr const char* kSettingsName = "terminal-settings.ini";
constexpr const char* kProofName = "restart-settings.ini";
constexpr const char* kLogName = "terminal.log";

// Files of the library's own: what lists and dialogs look like, and where dialogs stand.
struct LibraryFiles {
    const char* lists;
    const char* dialogs;
};
constexpr LibraryFiles kUserFiles{"recovery.ini", "dialogs.ini"};
constexpr LibraryFiles kProofFiles{"restart-recovery.ini", "restart-dialogs.ini"};

// The library names its files in the code page. For a folder that has no name in it there are none: a bare name would
// put them elsewhere.
void useLibraryFiles(const TerminalRun& run, const LibraryFiles& files) {
    const std::string folder = codePageFolder(run.options.outDirectory);
    const auto file = [&](const char* name) {
        return folder.empty() ? CString() : CString((folder + "/" + name).c_str());
    };
    CCommonListCtrl::SetRecoveryFiles(file(files.lists), file(files.dialogs));
}
}  // namespace

TerminalRun::TerminalRun(const Options& given)
    : options(given),
      settings(disk, systemPath(outPath(kSettingsName))),
      proofStore(disk, systemPath(outPath(kProofName))) {}

void TerminalRun::openProofStore() {
    std::error_code none;
    for (const char* name : {kProofName, kProofFiles.lists, kProofFiles.dialogs})
        std::filesystem::remove(systemPath(outPath(name)), none);
    useLibraryFiles(*this, kProofFiles);
    proofStore.load();
    writeFirstUserColumns(proofStore);
    useSettings(&proofStore);
}

bool TerminalRun::reopenProofStore() {
    const bool written = proofStore.save(quor::kReplacePatience);
    return proofStore.load() && written;
}

bool TerminalRun::saveStores() {
    if (recorder) recorder->close();
    if (settings.save(quor::kReplacePatience)) return true;
    Log::instance().add(kSettingsNotWritten);
    return false;
}

// What was damaged is kept beside, whole, and the store goes on with what could be read.
void TerminalRun::loadSettings() {
    Log& log = Log::instance();
    if (!settings.load()) return log.add("The settings could not be read; nothing will be saved in this run.");
    const std::size_t line = settings.damagedLine();
    if (!line) return;
    const std::string kept = outPath(kSettingsName) + ".damaged";
    const bool copied = disk.write(systemPath(kept), settings.text()) && disk.flush(systemPath(kept));
    if (copied) settings.dropDamagedLines();
    log.add(("Line " + std::to_string(line) + " of the settings is damaged; " +
             (copied ? "the file as it was is kept as " : "it stays, since this file could not be written: ") + kept)
                .c_str());
}

std::string TerminalRun::open() {
    Log::instance().openFile(outPath(kLogName));
    loadSettings();
    writeFirstUserColumns(settings);
    useSettings(&settings);
    useLibraryFiles(*this, kUserFiles);
    if (!options.recordFile.empty()) {
        recorder = std::make_unique<TapeRecorder>(options.recordFile);
        if (!recorder->error().empty()) return recorder->error();
    }
    SimulatorSettings simulator;
    simulator.seed = options.seed;
    simulator.instruments = options.instruments;
    auto source = options.tape ? openTape(*options.tape) : makeSimulator(simulator);
    feed = std::make_unique<Feed>(std::move(source), options.speed, recorder.get());
    return {};
}

std::string TerminalRun::feedName() const {
    if (!options.tape) return "simulator, " + std::to_string(options.instruments) + " instruments";
    return options.tape->file;
}

}  // namespace terminal
