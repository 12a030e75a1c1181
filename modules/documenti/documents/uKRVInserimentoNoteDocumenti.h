#pragma once

#include "uKRVInserimentoBase.h"

#include <QLineEdit>
#include <QPlainTextEdit>

// Editor of the document notes: a title, unique among notes, and its text.
class TKRVInserimentoNoteDocumenti : public TKRVInserimentoBase
{
    Q_OBJECT

public:
    explicit TKRVInserimentoNoteDocumenti(IKRVMain &main);

protected:
    void ClearFields() override;
    void FillFields(const TQ3Dataset &dataset) override;
    void WriteFields(TQ3Dataset &dataset) override;
    QString ValidationError() override;

private:
    QLineEdit *txtTitolo;
    QPlainTextEdit *txtTesto;
};
