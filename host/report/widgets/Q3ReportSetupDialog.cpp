#include "Q3ReportSetupDialog.h"

#include "Q3ReportPreview.h"
#include "Q3ReportPrinter.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

TQ3ReportSetupDialog::TQ3ReportSetupDialog(TQ3ReportSystem *system, QWidget *parent)
    : QDialog(parent), m_system(system), m_rbPreview(new QRadioButton(QStringLiteral("Anteprima"), this)),
      m_rbPrinter(new QRadioButton(QStringLiteral("Stampante"), this)),
      m_rbFile(new QRadioButton(QStringLiteral("File PDF"), this)), m_txtFile(new QLineEdit(this))
{
    setObjectName(QStringLiteral("Q3ReportSetupDialog"));
    setWindowTitle(system->TitleSetup);
    m_rbPreview->setObjectName(QStringLiteral("rbPreview"));
    m_rbPrinter->setObjectName(QStringLiteral("rbPrinter"));
    m_rbFile->setObjectName(QStringLiteral("rbFile"));
    m_txtFile->setObjectName(QStringLiteral("txtFile"));
    m_txtFile->setAccessibleName(QStringLiteral("File PDF"));

    auto group = new QGroupBox(QStringLiteral("Destinazione"), this);
    auto groupLayout = new QVBoxLayout(group);
    groupLayout->addWidget(m_rbPreview);
    groupLayout->addWidget(m_rbPrinter);
    groupLayout->addWidget(m_rbFile);
    auto fileRow = new QHBoxLayout;
    auto browse = new QPushButton(QStringLiteral("Sfoglia..."), this);
    browse->setObjectName(QStringLiteral("btnSfoglia"));
    fileRow->addWidget(m_txtFile);
    fileRow->addWidget(browse);
    groupLayout->addLayout(fileRow);

    auto buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setText(QStringLiteral("Annulla"));
    auto layout = new QVBoxLayout(this);
    layout->addWidget(group);
    layout->addWidget(buttons);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(browse, &QPushButton::clicked, this, &TQ3ReportSetupDialog::Browse);
    for (QRadioButton *button : {m_rbPreview, m_rbPrinter, m_rbFile})
        connect(button, &QRadioButton::toggled, this, &TQ3ReportSetupDialog::UpdateState);
}

void TQ3ReportSetupDialog::UpdateState()
{
    m_txtFile->setEnabled(m_rbFile->isChecked());
}

void TQ3ReportSetupDialog::Browse()
{
    const QString extension = m_system->RenderObject ? m_system->RenderObject->FileExtension : QStringLiteral("*.pdf");
    const QString name = QFileDialog::getSaveFileName(this, QStringLiteral("Salva come PDF"), m_txtFile->text(),
                                                      QStringLiteral("File PDF (%1)").arg(extension));
    if (!name.isEmpty()) {
        m_txtFile->setText(name);
        m_rbFile->setChecked(true);
    }
}

void TQ3ReportSetupDialog::Run()
{
    if (m_system->RenderObject)
        m_rbFile->setText(m_system->RenderObject->DisplayName);
    switch (m_system->DefaultDest) {
    case TQ3ReportDestination::Preview:
        m_rbPreview->setChecked(true);
        break;
    case TQ3ReportDestination::Printer:
        m_rbPrinter->setChecked(true);
        break;
    case TQ3ReportDestination::File:
        m_rbFile->setChecked(true);
        break;
    }
    if (!m_system->OutputFileName.isEmpty())
        m_txtFile->setText(m_system->OutputFileName);
    UpdateState();
    for (;;) {
        if (exec() != QDialog::Accepted) {
            m_system->SetSetupResult(false, m_system->DefaultDest);
            return;
        }
        if (m_rbFile->isChecked() && m_txtFile->text().trimmed().isEmpty()) {
            Browse();
            if (m_txtFile->text().trimmed().isEmpty())
                continue;
        }
        break;
    }
    if (m_rbPrinter->isChecked()) {
        QPrintDialog printDialog(Q3ReportSystemPrinter(m_system), this);
        m_system->SetSetupResult(printDialog.exec() == QDialog::Accepted, TQ3ReportDestination::Printer);
    } else if (m_rbFile->isChecked()) {
        m_system->SetSetupResult(true, TQ3ReportDestination::File, m_txtFile->text().trimmed());
    } else {
        m_system->SetSetupResult(true, TQ3ReportDestination::Preview);
    }
}

namespace {

// A replaced window kept for the next run until the system lets it go.
template <typename TForm>
void OverrideForm(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)
{
    if (mode == TQ3OverrideMode::Free) {
        delete form;
        form = nullptr;
        return;
    }
    if (!form)
        form = new TForm(system);
    static_cast<TForm *>(form)->Run();
}

} // namespace

void RaveSystemOverrideSetup(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)
{
    OverrideForm<TQ3ReportSetupDialog>(system, mode, form);
}

void RaveSystemOverridePreview(TQ3ReportSystem *system, TQ3OverrideMode mode, QObject *&form)
{
    OverrideForm<TQ3ReportPreview>(system, mode, form);
}
