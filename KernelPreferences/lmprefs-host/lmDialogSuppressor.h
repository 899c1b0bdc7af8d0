#pragma once

#include <QObject>

// Dismisses every dialog shown while alive, before it reaches the screen, and
// drops the user's input meanwhile: used where no person can answer (the
// defaults pass, headless runs).
class lmDialogSuppressor : public QObject
{
public:
    // report: say on stderr which dialog was dismissed and what it said.
    explicit lmDialogSuppressor(bool report = false);
    ~lmDialogSuppressor() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool m_report;
};
