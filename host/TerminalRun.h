// One run of the terminal: what the command line asked for, the feed, the recorder, the settings and the figures. The
// application owns it and the frame works on it; it outlives every window.
#pragma once

#include "host/core/Feed.h"
#include "host/core/Options.h"
#include "host/core/SettingsFile.h"
#include "host/core/Summary.h"
#include "host/core/TapeRecorder.h"
#include "host/panes/PaintFigures.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace terminal {

inline constexpr int kExitWell = 0;
inline constexpr int kExitCheckFailed = 1;  // kExitBadInput is 2

struct Panes;

inline constexpr const char* kSettingsNotWritten = "The settings could not be written.";

class TerminalRun {
public:
    explicit TerminalRun(const Options& options);

    // Opens feed, log, recording and settings; the out folder is there. "" or the message with which the program ends
    // before any window opens.
    std::string open();

    // Writes what is left of settings and recording; a file that another program holds is waited for. False, after a
    // line in the log: the settings stay behind.
    bool saveStores();

    // A path inside the out folder.
    std::string outPath(const char* name) const { return options.outDirectory + "/" + name; }
    // What the feed is, for the title: "simulator, 500 instruments" or the tape's name.
    std::string feedName() const;

    // From here on the settings of lists and dialogs go to stores of this run's own, empty but for the first user
    // columns.
    void openProofStore();
    // Writes that store and reads it from its file again. False: the file could not be written or read.
    bool reopenProofStore();

    Options options;
    SteadyClock clock;
    PaintFigures figures{clock};
    quor::Disk disk;
    SettingsFile settings;
    SettingsFile proofStore;
    std::unique_ptr<TapeRecorder> recorder;
    std::unique_ptr<Feed> feed;
    RunSummary summary;
    int exitCode = kExitWell;
    // What the program does to the panes and sees in them when the feed has ended, all settled; empty: nothing. The
    // fault says whether it was planted, the check what does not hold.
    std::function<bool(const Panes&)> plantFault;
    std::function<std::vector<std::string>(const Panes&)> selfCheck;

private:
    void loadSettings();
};

}  // namespace terminal
