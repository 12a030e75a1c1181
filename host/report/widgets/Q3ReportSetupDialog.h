#pragma once

#include "Q3ReportSystem.h"

#include <QDialog>

class QLineEdit;
class QRadioButton;

// The host's "Output Options" dialog: preview, printer (through the system's
// printer dialog) or a PDF file.
class Q3_EXPORT TQ3ReportSetupDialog : public QDialog
{
    Q_OBJECT

public:
    explicit TQ3ReportSetupDialog(TQ3ReportSystem *system, QWidget *parent = nullptr);

    // Shows the dialog for one run and passes the choice to the system.
    void Run();

private:
    void Browse();
    void UpdateState();

    TQ3ReportSystem *m_system;
    QRadioButton *m_rbPreview;
    QRadioButton *m_rbPrinter;
    QRadioButton *m_rbFile;
    QLineEdit *m_txtFile;
};

// Replacements for the report engine's own windows, to be set as the system's
// OnOverrideSetup and OnOverridePreview.
Q3_EXPORT void RaveSystemOverrideSetup(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form);
Q3_EXPORT void RaveSystemOverridePreview(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form);
