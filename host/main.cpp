// The demo terminal: a Windows program over the library, fed by a simulator or a recorded tape.
#include "host/DialogLog.h"
#include "host/MainFrame.h"
#include "host/OutFolder.h"
#include "host/TerminalRun.h"
#include "host/core/Utf8.h"
#include "host/panes/HostEntries.h"
#include "host/panes/LogPane.h"
#include "host/panes/Theme.h"
#include "host/proof/BoxGuard.h"
#include "host/proof/Proofs.h"
#include "host/proof/SelfCheck.h"
#include "host/proof/SelfTestFault.h"
#include "quor/framework/ZTDialog.h"
#include "quor/list/CommonListCtrl.h"
#include "quor/platform/proving/UserInput.h"

#include <cstdio>
#include <optional>
#include <shellapi.h>
#include <vector>

namespace terminal {

namespace {

class CTerminalApp : public CWinApp {
public:
    // `guard` is that of a headless run, else null.
    CTerminalApp(TerminalRun& run, BoxGuard* guard) : CWinApp("Quor Terminal"), m_run(run), m_guard(guard) {}

    BOOL InitInstance() override {
        auto* const frame = new CMainFrame(m_run);  // deletes itself with its window
        m_pMainWnd = frame;
        if (frame->CreateTerminal()) return TRUE;
        std::fputs("The window could not be made.\n", stderr);
        m_pMainWnd = nullptr;
        m_run.exitCode = kExitCheckFailed;
        return FALSE;
    }
    int ExitInstance() override {
        const bool ranToItsEnd = !m_run.summary.ending.empty();
        if (m_guard && ranToItsEnd) runProofs(m_run, *m_guard);
        return m_run.exitCode;
    }

private:
    TerminalRun& m_run;
    BoxGuard* m_guard;
};

// The windows are gone, and without this nobody would miss the settings before the next start.
int tellSettingsLost(const TerminalRun& run, int code) {
    std::fprintf(stderr, "%s\n", kSettingsNotWritten);
    MSG quit;
    ::PeekMessageA(&quit, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);  // or the box would not stay
    if (!run.options.headless) AfxMessageBox(kSettingsNotWritten, MB_OK | MB_ICONSTOP);
    return code == kExitWell ? kExitCheckFailed : code;
}

int badInput(const std::string& message) {
    printError(message);
    return kExitBadInput;
}

int runTerminal(Options options) {
    if (const std::string message = checkFiles(options); !message.empty()) return badInput(message);
    const OutFolder folder(options.outDirectory);  // held to the last line of the log
    if (folder.path().empty()) return badInput(options.outDirectory + ": this folder cannot be made");
    options.outDirectory = folder.path();
    if (!folder.remark().empty()) {
        printError(folder.remark());
        Log::instance().add(folder.remark().c_str());
    }
    TerminalRun run(options);
    run.summary.proofs = proofFigures();
    if (const std::string message = run.open(); !message.empty()) return badInput(message);
    if (options.headless && !quor::useOwnDesktop("quor-terminal")) {
        std::fprintf(stderr, "No desktop of its own: error %lu\n", ::GetLastError());
        return kExitBadInput;
    }
    if (options.selfTestFault) run.plantFault = &plantFault;
    run.selfCheck = [&run](const Panes& panes) { return selfCheck(run.feed->tally(), panes, run.options.keep); };
    setAppearance();
    CZTDialog::VisualizationColor();
    const DialogLog dialogs;
    std::optional<BoxGuard> guard;
    if (options.headless) guard.emplace();
    CTerminalApp app(run, guard ? &*guard : nullptr);
    int code = AfxWinMain(::GetModuleHandleA(nullptr), ::GetCommandLineA(), SW_SHOWNORMAL);
    for (const std::string& text : guard ? guard->takeTexts() : std::vector<std::string>{}) {
        std::fprintf(stderr, "unexpected message box: %s\n", text.c_str());
        if (code == kExitWell) code = kExitCheckFailed;
    }
    if (!run.saveStores()) code = tellSettingsLost(run, code);
    useSettings(nullptr);
    const bool recorded = !run.recorder || run.recorder->close();
    if (!recorded) printError(run.recorder->error());
    if (!run.summary.ending.empty()) std::printf("%s\n", summaryLine(run.summary).c_str());
    return code == kExitWell && !recorded ? kExitCheckFailed : code;
}

// The wide command line, in UTF-8: the arguments of main have lost what the code page does not have.
ParsedOptions parseCommandLine() {
    int count = 0;
    wchar_t** const words = ::CommandLineToArgvW(::GetCommandLineW(), &count);
    std::vector<std::string> texts;
    for (int i = 1; i < count; ++i) texts.push_back(utf8Text(words[i]));
    ::LocalFree(words);
    std::vector<const char*> arguments;
    for (const std::string& text : texts) arguments.push_back(text.c_str());
    ParsedOptions parsed = parseOptions(static_cast<int>(arguments.size()), arguments.data(), proofNames());
    if (auto& tape = parsed.options.tape) tape->symbol = codePageText(tape->symbol);
    return parsed;
}

}  // namespace

}  // namespace terminal

int main() {
    terminal::ParsedOptions parsed = terminal::parseCommandLine();
    if (!parsed.error.empty()) return terminal::badInput(parsed.error);
    if (parsed.options.help) {
        std::fputs(terminal::usageText(terminal::proofNames()).c_str(), stdout);
        return 0;
    }
    return terminal::runTerminal(parsed.options);
}
