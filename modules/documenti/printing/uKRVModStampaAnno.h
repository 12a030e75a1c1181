#pragma once

#include <QDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

// The frame of the yearly print dialogs: the year, "OK" and "Annulla"; kept
// above the other windows, centred, of a fixed size. The year starts at the
// current one when the dialog is made and then keeps the last choice.
class TKRVModStampaAnno : public QDialog
{
    Q_OBJECT

public:
    int Anno() const { return txtAnno->value(); }

protected:
    explicit TKRVModStampaAnno(const QString &caption);

    // Where a dialog puts its own choices, below the year.
    QVBoxLayout *Scelte() const { return m_scelte; }
    // Fixes the size once the dialog's own choices are in.
    void FormCreate();

private:
    QSpinBox *txtAnno;
    QVBoxLayout *m_scelte;
};
