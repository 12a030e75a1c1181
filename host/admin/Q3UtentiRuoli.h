#pragma once

#include "Q3Global.h"

#include <QDialog>
#include <QSqlDatabase>

class QGroupBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

// "Utenti e ruoli": the users with their roles on one page, the roles with
// their rights on the other. Every change but the rights is written at once;
// a role's rights are written by "Salva diritti", and unsaved ones are asked
// about before another role is shown or the window closes.
class Q3_EXPORT TQ3UtentiRuoli : public QDialog
{
    Q_OBJECT

public:
    explicit TQ3UtentiRuoli(const QSqlDatabase &db, QWidget *parent = nullptr);

    // Whether the rights shown differ from the role's saved ones.
    bool DirittiModificati() const { return m_dirittiModificati; }

    void reject() override;

private:
    QWidget *PaginaUtenti();
    QWidget *PaginaRuoli();

    QString UtenteSelezionato() const;
    void CaricaUtenti(const QString &selezionato);
    void MostraUtente();
    void NuovoUtente();
    void CambiaAttivo();
    void ImpostaPassword();
    void RuoloUtenteCliccato(int idRuolo, bool assegnato);

    int RuoloSelezionato() const;
    void CaricaRuoli(int selezionato);
    void RuoloCambiato(QListWidgetItem *corrente, QListWidgetItem *precedente);
    void MostraDiritti();
    // Before the rights shown are left: answers false when they must stay.
    bool LasciaDiritti();
    bool SalvaDiritti();
    void NuovoRuolo();
    void RinominaRuolo();
    void EliminaRuolo();

    QSqlDatabase m_db;
    QTreeWidget *m_utenti = nullptr;
    QPushButton *m_attiva = nullptr;
    QPushButton *m_password = nullptr;
    QGroupBox *m_ruoliUtente = nullptr;
    QListWidget *m_ruoli = nullptr;
    QPushButton *m_rinomina = nullptr;
    QPushButton *m_elimina = nullptr;
    QTreeWidget *m_diritti = nullptr;
    QPushButton *m_salvaDiritti = nullptr;
    // The role whose rights the tree shows (0: none).
    int m_ruoloDiritti = 0;
    QString m_nomeRuoloDiritti;
    bool m_dirittiModificati = false;
    bool m_caricamento = false;
};

// The administrator's window of users and roles, modal.
Q3_EXPORT void Q3ApriUtentiRuoli(const QSqlDatabase &db, QWidget *parent);
