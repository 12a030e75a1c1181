#pragma once

#include "Q3Global.h"

#include <QDialog>
#include <QLineEdit>
#include <QString>

#include <functional>

class QFormLayout;

// Runs a command of an administration window: a refusal (EQ3Rifiuto) is shown
// in a warning box "Attenzione", any other failure in an error box "Errore".
// Answers whether the command ran to its end.
Q3_EXPORT bool Q3EseguiComando(const std::function<void()> &comando);

// A small modal form of labelled one-line inputs, with "OK" and "Annulla".
// "OK" runs the confirmation command; when that is refused or fails, the
// message is shown and the form stays open with what was typed.
class Q3_EXPORT TQ3ModuloCampi : public QDialog
{
    Q_OBJECT

public:
    TQ3ModuloCampi(const QString &objectName, const QString &caption, QWidget *parent = nullptr);

    // An input of that object name under its caption; a password input hides what is typed.
    QLineEdit *AggiungiCampo(const QString &name, const QString &caption, bool password = false);
    QString Testo(const QString &name) const;
    void SetConferma(std::function<void()> conferma) { m_conferma = std::move(conferma); }

    void accept() override;

private:
    QFormLayout *m_campi = nullptr;
    std::function<void()> m_conferma;
};
