#include "host/proof/Proofs.h"

#include "host/MainFrame.h"
#include "host/TerminalRun.h"
#include "host/panes/LogPane.h"
#include "host/proof/BarsProof.h"
#include "host/proof/BoxGuard.h"
#include "host/proof/FindProof.h"
#include "host/proof/LayoutProof.h"
#include "host/proof/LooksProof.h"
#include "host/proof/UserHand.h"

#include <cstdio>
#include <functional>
#include <memory>

namespace terminal {

namespace {

struct Entry {
    const char* name;   // of --proof, and of its lines on stderr and in the log
    const char* field;  // of the summary
    std::unique_ptr<Proof> (*make)(TerminalRun& run, Outcome& outcome);
};

// In the order in which they act. The layouts come behind what looks at lists, the bars last: they change the room of
// all.
constexpr Entry kTable[] = {
    {"find", "find_checks", &makeFindProof},
    {"looks", "looks_checks", &makeLooksProof},
    {"layout", "layouts_restored", &makeLayoutProof},
    {"bars", "bars_checks", &makeBarsProof},
};

class ProofRun {
public:
    ProofRun(TerminalRun& run, BoxGuard& guard) : m_run(run), m_guard(guard) {
        for (const Entry& entry : kTable)
            if (run.options.proof.empty() || run.options.proof == entry.name)
                m_active.push_back(std::make_unique<Active>(entry, run));
    }

    void run() {
        m_run.openProofStore();
        inFrame([this](CMainFrame& frame) {
            for (const auto& active : m_active) active->missing = active->proof->missing(frame);
            each(frame, &Proof::act);
        });
        if (m_run.reopenProofStore())
            inFrame([this](CMainFrame& frame) { each(frame, &Proof::check); });
        else
            fail("the store could not be written and read again");
        for (const auto& active : m_active) tell(*active);
    }

private:
    struct Active {
        Active(const Entry& of, TerminalRun& run) : entry(of), proof(of.make(run, outcome)) {}
        const Entry& entry;
        Outcome outcome;
        std::unique_ptr<Proof> proof;
        std::string missing;
        ULONGLONG milliseconds = 0;
    };

    void fail(const char* why) {
        for (const auto& active : m_active) active->outcome.findings.push_back(why);
    }

    // One frame over the store in use, shown, for as long as `use` takes.
    void inFrame(const std::function<void(CMainFrame&)>& use) {
        auto* const frame = new CMainFrame(m_run);
        AfxGetApp()->m_pMainWnd = frame;
        const bool made = frame->CreateRestored() != FALSE;
        const HWND window = frame->GetSafeHwnd();
        if (made) {
            bringToFront(*frame);
            use(*frame);
        } else {
            fail("the window could not be made");
        }
        AfxGetApp()->m_pMainWnd = nullptr;  // its end does not end the program
        if (made && ::IsWindow(window)) ::DestroyWindow(window);
        pumpAll();
    }

    void each(CMainFrame& frame, void (Proof::*step)(CMainFrame&)) {
        const HWND window = frame.GetSafeHwnd();
        for (const auto& active : m_active) {
            if (!active->missing.empty()) continue;
            if (!::IsWindow(window)) return fail("the window has closed");
            const ULONGLONG begin = ::GetTickCount64();
            ((*active->proof).*step)(frame);
            pumpAll();
            active->milliseconds += ::GetTickCount64() - begin;
            for (const std::string& text : m_guard.takeTexts())
                active->outcome.findings.push_back("a box nobody expects: " + text);
        }
    }

    void tell(Active& active) {
        Outcome& outcome = active.outcome;
        const std::string name = active.entry.name;
        if (!active.missing.empty() && !m_run.options.tape)
            outcome.findings.push_back("it has nothing to prove with; missing: " + active.missing);
        for (ProofFigure& figure : m_run.summary.proofs)
            if (figure.field == active.entry.field) figure = {figure.field, outcome.held, outcome.tried};
        const std::string told = outcome.tried ? std::to_string(outcome.held) + " of " + std::to_string(outcome.tried) +
                                                     " checks held, in " + std::to_string(active.milliseconds) + " ms"
                                               : "nothing was tried";
        Log::instance().add(("Proof " + name + ": " + told).c_str());
        for (const std::string& finding : outcome.findings) {
            Log::instance().add(("Proof " + name + ": " + finding).c_str());
            std::fprintf(stderr, "%s: %s\n", name.c_str(), finding.c_str());
        }
        if (!outcome.findings.empty() && m_run.exitCode == kExitWell) m_run.exitCode = kExitCheckFailed;
    }

    TerminalRun& m_run;
    BoxGuard& m_guard;
    std::vector<std::unique_ptr<Active>> m_active;  // each at one place: its proof knows its outcome
};

}  // namespace

std::vector<std::string> proofNames() {
    std::vector<std::string> names;
    for (const Entry& entry : kTable) names.push_back(entry.name);
    return names;
}

std::vector<ProofFigure> proofFigures() {
    std::vector<ProofFigure> figures;
    for (const Entry& entry : kTable) figures.push_back({entry.field});
    return figures;
}

void runProofs(TerminalRun& run, BoxGuard& guard) { ProofRun(run, guard).run(); }

}  // namespace terminal
