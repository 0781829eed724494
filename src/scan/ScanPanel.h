// What the window shows before, during and after a scan.
#ifndef ZELVREG_SCAN_SCAN_PANEL_H
#define ZELVREG_SCAN_SCAN_PANEL_H

namespace zelvreg {

struct Form42;

// Shows the progress panel and disables what must not run during a scan.
void openScanPanel(Form42& form);

// Shows the results page instead of the options page.
void showResultsPage(Form42& form);

// The results page with its count, and the buttons that work on it.
void openResults(Form42& form);

// The results page with its counts, and the buttons as they are when no scan runs.
void closeScanPanel(Form42& form);

// The commands that work on findings.
void enableFindingCommands(Form42& form, bool enabled);
// The commands that must not run during a scan, and Cancel, which runs only then.
void enableIdleCommands(Form42& form, bool enabled);

}  // namespace zelvreg

#endif
