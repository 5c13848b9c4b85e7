// The demo terminal: a Windows program over the library, fed by a simulator or a recorded tape.
#include <cstdio>
#include <optional>

#include "host/BoxGuard.h"
#include "host/FindProof.h"
#include "host/HostEntries.h"
#include "host/LogPane.h"
#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/Theme.h"
#include "platform/win/UserInput.h"
#include "src/foundation/core/Globals.h"
#include "src/list/CommonListCtrl.h"

namespace terminal {

namespace {

class CTerminalApp : public CWinApp {
public:
    explicit CTerminalApp(TerminalRun& run) : CWinApp("Quor Terminal"), m_run(run) {}

    BOOL InitInstance() override {
        auto* const frame = new CMainFrame(m_run);  // deletes itself with its window
        m_pMainWnd = frame;
        if (frame->CreateTerminal()) return TRUE;
        std::fputs("The window could not be made.\n", stderr);
        m_pMainWnd = nullptr;
        m_run.exitCode = exitCheckFailed;
        return FALSE;
    }
    int ExitInstance() override {
        if (!m_run.layoutsLeft.lists.empty()) {
            proveFinding(m_run);
            proveRestart();
        }
        return m_run.exitCode;
    }

private:
    void restartFails(const std::string& line) {
        std::fprintf(stderr, "restart: %s\n", line.c_str());
        if (m_run.exitCode == exitWell) m_run.exitCode = exitCheckFailed;
    }

    // A second frame over what the first one left; what it shows is held against what that one showed.
    void proveRestart() {
        RunSummary& summary = m_run.summary;
        const std::vector<ListLayout>& left = m_run.layoutsLeft.lists;
        summary.layoutsTried = static_cast<int>(left.size());
        summary.layoutsRestored = 0;
        for (const std::string& line : m_run.layoutsLeft.failures) restartFails(line);
        std::vector<ListLayout> found;
        if (m_run.reopenProofStore()) {
            auto* const frame = new CMainFrame(m_run);
            m_pMainWnd = frame;
            if (frame->CreateRestored()) {
                found = findLayouts(frame->proofPanes());
                frame->DestroyWindow();
            }
        }
        found.resize(left.size());
        for (std::size_t i = 0; i < left.size(); ++i) {
            const std::vector<std::string> lines = differences(left[i], found[i]);
            if (lines.empty()) ++*summary.layoutsRestored;
            for (const std::string& line : lines) restartFails(line);
        }
    }

    TerminalRun& m_run;
};

// Every list starts in the terminal's colours and font; a user's own choice for a list wins.
void setAppearance() {
    cCustomizedAppearanceSettings appearance = Get_Apperance_setting();
    appearance.crBackground = palette::background;
    appearance.crText = palette::text;
    appearance.csFontName = "Tahoma";
    appearance.csFontSize = "9";
    Set_Apperance_setting(appearance);
}

// The windows are gone, and without this nobody would miss the settings before the next start.
int tellSettingsLost(const TerminalRun& run, int code) {
    std::fprintf(stderr, "%s\n", settingsNotWritten);
    MSG quit;
    ::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);  // or the box would not stay
    if (!run.options.headless) AfxMessageBox(settingsNotWritten, MB_OK | MB_ICONSTOP);
    return code == exitWell ? exitCheckFailed : code;
}

int runTerminal(const Options& options) {
    TerminalRun run(options);
    if (const std::string message = run.open(); !message.empty()) {
        std::fprintf(stderr, "%s\n", message.c_str());
        return exitBadInput;
    }
    if (options.headless && !quor::useOwnDesktop("quor-terminal")) {
        std::fprintf(stderr, "No desktop of its own: error %lu\n", ::GetLastError());
        return exitBadInput;
    }
    CCommonListCtrl::SetRecoveryFiles(run.outPath("recovery.ini").c_str(), run.outPath("dialogs.ini").c_str());
    setAppearance();
    std::optional<BoxGuard> guard;
    if (options.headless) guard.emplace();
    CTerminalApp app(run);
    int code = AfxWinMain(::GetModuleHandleA(nullptr), ::GetCommandLineA(), SW_SHOWNORMAL);
    for (const std::string& text : guard ? guard->texts() : std::vector<std::string>{}) {
        std::fprintf(stderr, "unexpected message box: %s\n", text.c_str());
        if (code == exitWell) code = exitCheckFailed;
    }
    if (!run.saveStores()) code = tellSettingsLost(run, code);
    useSettings(nullptr);
    const bool recorded = !run.recorder || run.recorder->close();
    if (!recorded) std::fprintf(stderr, "%s\n", run.recorder->error().c_str());
    if (!run.summary.ending.empty()) std::printf("%s\n", summaryLine(run.summary).c_str());
    return code == exitWell && !recorded ? exitCheckFailed : code;
}

}  // namespace

}  // namespace terminal

int main(int count, char** arguments) {
    const terminal::ParsedOptions parsed = terminal::parseOptions(count - 1, arguments + 1);
    if (!parsed.error.empty()) {
        std::fprintf(stderr, "%s\n", parsed.error.c_str());
        return terminal::exitBadInput;
    }
    if (parsed.options.help) {
        std::fputs(terminal::usageText(), stdout);
        return 0;
    }
    return terminal::runTerminal(parsed.options);
}
