#include "uKRVInserimentoNoteDocumenti.h"

#include "KRVUtils.h"
#include "Q3Dataset.h"
#include "uKRVFormKit.h"

#include <QGridLayout>

TKRVInserimentoNoteDocumenti::TKRVInserimentoNoteDocumenti(IKRVMain &main)
    : TKRVInserimentoBase(main, {.Caption = QStringLiteral("Inserimento / Modifica note documenti"),
                                 .MinimumSize = QSize(600, 400),
                                 .Entita = &KRVEntitaNoteDocumenti(),
                                 .RefreshAfterSave = true,
                                 .RefreshAfterDelete = true,
                                 .CheckIcon = TQ3MsgIcon::Warning,
                                 .SaveFailureIcon = TQ3MsgIcon::Error,
                                 .ChiediSeNonMemorizzato = true}),
      txtTitolo(KRVCampoTesto(QStringLiteral("txtTitolo"), 100)), txtTesto(new QPlainTextEdit)
{
    setObjectName(QStringLiteral("KRVInserimentoNoteDocumenti"));
    txtTesto->setObjectName(QStringLiteral("txtTesto"));

    // The text takes all the room below the title.
    auto content = new QWidget(this);
    content->setObjectName(QStringLiteral("pnlNota"));
    auto grid = new QGridLayout(content);
    grid->setContentsMargins(12, 12, 12, 12);
    grid->setHorizontalSpacing(12);
    grid->addWidget(KRVEtichetta(QStringLiteral("Titolo"), txtTitolo), 0, 0);
    grid->addWidget(txtTitolo, 0, 1, Qt::AlignLeft);
    grid->addWidget(KRVEtichetta(QStringLiteral("Testo"), txtTesto), 1, 0, Qt::AlignTop);
    grid->addWidget(txtTesto, 1, 1);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(1, 1);
    CollegaCampo(txtTitolo);
    CollegaCampo(txtTesto);
    ImpostaContenuto(content);
    FormCreate();
}

void TKRVInserimentoNoteDocumenti::ClearFields()
{
    txtTitolo->clear();
    txtTesto->clear();
}

void TKRVInserimentoNoteDocumenti::FillFields(const TQ3Dataset &dataset)
{
    txtTitolo->setText(dataset.FieldValue(QStringLiteral("TITOLO")).toString());
    txtTesto->setPlainText(dataset.FieldValue(QStringLiteral("TESTO")).toString());
}

void TKRVInserimentoNoteDocumenti::WriteFields(TQ3Dataset &dataset)
{
    dataset.SetFieldValue(QStringLiteral("TITOLO"), txtTitolo->text());
    dataset.SetFieldValue(QStringLiteral("TESTO"), txtTesto->toPlainText());
}

QString TKRVInserimentoNoteDocumenti::ValidationError()
{
    if (txtTitolo->text().isEmpty())
        return QStringLiteral("Non è stato indicato il titolo!");
    if (TitoloNotaDocumentiExists(Sessione(), txtTitolo->text(), IdRecord()))
        return QStringLiteral("Esiste già una nota con questo titolo!");
    return {};
}
