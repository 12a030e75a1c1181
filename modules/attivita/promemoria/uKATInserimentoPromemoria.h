#pragma once

#include <QCheckBox>
#include <QDate>
#include <QDateEdit>
#include <QDialog>
#include <QLineEdit>
#include <QPlainTextEdit>

// The dialog of a reminder added by hand: title, date, note and whether it is
// done. "Salva" refuses an empty title with a warning and keeps the dialog open.
class TKATInserimentoPromemoria : public QDialog
{
    Q_OBJECT

public:
    explicit TKATInserimentoPromemoria(QWidget *parent = nullptr);

    void Imposta(const QString &titolo, const QDate &data, const QString &note, bool fatto);
    QString Titolo() const { return txtTitolo->text().trimmed(); }
    QDate Data() const { return txtData->date(); }
    QString Note() const { return memoNote->toPlainText(); }
    bool Fatto() const { return chkFatto->isChecked(); }

    void accept() override;

private:
    QLineEdit *txtTitolo = nullptr;
    QDateEdit *txtData = nullptr;
    QPlainTextEdit *memoNote = nullptr;
    QCheckBox *chkFatto = nullptr;
};
