#pragma once

#include "Q3ModuleMetadata.h"

#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>

// "Opzioni": the options every loaded module declares in its metadata, a
// group a module, read from and written to the host's option store. A "Sì"/"No"
// option is stored as "True"/"False", a text as typed, a choice as the value
// chosen (a stored value the list does not offer is shown as it is, so saving
// keeps it); an option the store has no row for shows its default until saved. Closing with changes asks
// whether to save them first.
class Q3_EXPORT TQ3OpzioniDialog : public QDialog
{
    Q_OBJECT

public:
    TQ3OpzioniDialog(const QSqlDatabase &db, const QList<TQ3ModuleMetadata> &modules, QWidget *parent = nullptr);

    // Whether a value differs from the store's.
    bool Modificato() const;
    // Stores the changed values; answers whether the store has them now.
    bool Salva();

    void reject() override;

private:
    struct TCampo
    {
        TQ3ModuleOption Opzione;
        QString Letto;    // the stored value, or the default
        bool Memorizzato; // whether the store has a row for it
        QComboBox *SiNo = nullptr;
        QComboBox *Scelta = nullptr;
        QLineEdit *Testo = nullptr;

        QString Valore() const;
    };

    void AggiungiModulo(const TQ3ModuleMetadata &module, class QVBoxLayout *layout);
    void AggiornaPulsanti();

    QSqlDatabase m_db;
    QList<TCampo> m_campi;
    QPushButton *m_salva;
};

// Shows the options window for the modules, modally.
Q3_EXPORT void Q3ApriOpzioni(const QSqlDatabase &db, const QList<TQ3ModuleMetadata> &modules, QWidget *parent);
