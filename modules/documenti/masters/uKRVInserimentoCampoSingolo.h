#pragma once

#include "uKRVInserimentoBase.h"

#include <QLineEdit>

// What an editor of a one-text table adds to the editor's own description.
struct TKRVCampoSingoloInfo
{
    QString Name; // the input
    QString Label;
    int MaxLength = 0;
    bool UpperCase = false;
    QString MsgVuoto;     // the text is empty
    QString MsgEsistente; // another row holds the text (the table's code column)
};

// Editor of a table whose rows are one text besides their key (units of
// measure, payment types).
class TKRVInserimentoCampoSingolo : public TKRVInserimentoBase
{
    Q_OBJECT

protected:
    TKRVInserimentoCampoSingolo(IKRVMain &main, TKRVInserimentoInfo info, TKRVCampoSingoloInfo campo);

    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    QString ValidationError() override;

private:
    TKRVCampoSingoloInfo m_campo;
    QLineEdit *m_edit;
};
