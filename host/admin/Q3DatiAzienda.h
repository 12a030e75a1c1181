#pragma once

#include "Q3Azienda.h"
#include "Q3Global.h"

#include <QDialog>
#include <QHash>
#include <QSqlDatabase>

class QComboBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;

// The firm's data printed on every document, on four pages: the firm's
// particulars, its tax data, its bank and its logo. "Salva" stores them once
// every check is passed; closing with changes not saved asks first.
class Q3_EXPORT TQ3DatiAzienda : public QDialog
{
    Q_OBJECT

public:
    explicit TQ3DatiAzienda(const QSqlDatabase &db, QWidget *parent = nullptr);

    // The data as the window shows them now.
    TQ3Azienda Azienda() const;
    // Whether the window shows something not stored.
    bool Modificata() const { return m_leggibile && Azienda() != m_salvata; }
    // Stores what the window shows; answers whether it was stored.
    bool Salva();
    void SceltaLogo();
    void RimuoviLogo();

public slots:
    void reject() override;

private:
    QLineEdit *Campo(QFormLayout *form, const QString &caption, const QString &column);
    QComboBox *Scelta(QFormLayout *form, const QString &caption, const QString &name,
                      const QList<std::pair<QString, QString>> &items);
    void Mostra(const TQ3Azienda &azienda);
    void MostraLogo();

    QSqlDatabase m_db;
    TQ3Azienda m_salvata;
    bool m_leggibile = false;
    QByteArray m_logo;
    QHash<QString, QLineEdit *> m_campi; // by column
    QComboBox *cmbRegimeFiscale = nullptr;
    QComboBox *cmbSocioUnico = nullptr;
    QComboBox *cmbStatoLiquidazione = nullptr;
    QLabel *lblAnteprimaLogo = nullptr;
    QPushButton *btnRimuoviLogo = nullptr;
    QPushButton *btnSalva = nullptr;
};

// Shows the firm's data window, modal, until it is closed.
Q3_EXPORT void Q3ApriDatiAzienda(const QSqlDatabase &db, QWidget *parent);
