#pragma once

#include "KRVClientiFatturaPA.h"
#include "uKRVInserimentoBase.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QList>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QToolButton>

// Editor of the customers: code (proposed, fixed once saved), company data,
// payment type, bank coordinates, the electronic invoice's data and notes, on
// four pages.
class TKRVInserimentoClienti : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoClienti(IKRVMain &main);

    // The payment type chosen in its selection dialog.
    void cmdSelezionaTipoPagamentoClick();
    // The key of the payment type shown, 0 when none.
    int IdTipoPagamento() const { return m_idTipoPagamento; }

protected:
    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    QString ValidationError() override;
    // A customer with neither recipient code nor PEC is saved only when the user confirms.
    bool ConfermaSalvataggio() override;
    bool CanDeleteRecord() override;
    bool DeleteRecord() override;

private:
    // A text input stored as typed (or in capitals) in its column.
    struct TCampoTesto
    {
        QLineEdit *Edit;
        QString Column;
    };

    QLineEdit *CampoTesto(const QString &name, int maxLength, const QString &column, bool upperCase = false);
    void LimitaAlleColonne();
    QWidget *PaginaGenerale();
    QWidget *PaginaCoordinateBancarie();
    QWidget *PaginaFatturaElettronica();
    QWidget *PaginaNote();
    // The names are typed for a private person only.
    void AggiornaNominativo();
    // A foreign customer whose recipient code is empty gets the foreign customers' one.
    void txtNazioneEditingFinished();
    void ImpostaTipoSoggetto(const QString &codice);
    TKRVRecapitoCliente Recapito() const;
    QWidget *SceltaTipoPagamento();
    void ImpostaTipoPagamento(int id, const QString &text);

    QList<TCampoTesto> m_testi;
    QTabWidget *pgcPagine;
    QLineEdit *txtCodice;
    QLineEdit *txtRagioneSociale;
    QLineEdit *txtIndirizzo;
    QLineEdit *txtCitta;
    QLineEdit *txtCap;
    QLineEdit *txtProvincia;
    QLineEdit *txtNazione;
    QLineEdit *txtCodiceFiscale;
    QLineEdit *txtPartitaIVA;
    QLineEdit *txtTelefono1;
    QLineEdit *txtTelefono2;
    QLineEdit *txtTelefono3;
    QLineEdit *txtFax;
    QLineEdit *txtEmail;
    QLineEdit *txtWeb;
    QLineEdit *txtCoordBanBanca;
    QLineEdit *txtCoordBanAgenzia;
    QLineEdit *txtCoordBanPaese;
    QLineEdit *txtCoordBanCINEur;
    QLineEdit *txtCoordBanCIN;
    QLineEdit *txtCoordBanABI;
    QLineEdit *txtCoordBanCAB;
    QLineEdit *txtCoordBanConto;
    QLineEdit *txtCoordBanSwift;
    QComboBox *cboTipoSoggetto;
    QLineEdit *txtNome;
    QLineEdit *txtCognome;
    QLineEdit *txtCodiceDestinatario;
    QLineEdit *txtPec;
    QLabel *txtTipoPagamento;
    QToolButton *cmdSelezionaTipoPagamento;
    QPlainTextEdit *txtNote;
    int m_idTipoPagamento = 0;
};
