#include "Q3AdminKit.h"

#include "Q3Messages.h"

QLabel *Q3Etichetta(const QString &caption, QWidget *field)
{
    auto label = new QLabel(caption);
    label->setObjectName(QStringLiteral("lbl") + field->objectName());
    label->setBuddy(field);
    QString plain = caption;
    plain.remove(QLatin1Char('&'));
    if (plain.endsWith(QLatin1Char(':')))
        plain.chop(1);
    field->setAccessibleName(plain);
    return label;
}

bool Q3SalvaPrimaDiProseguire(const QString &domanda, const std::function<bool()> &salva,
                              const std::function<void()> &abbandona)
{
    switch (Q3MessageBox(QStringLiteral("Conferma"), domanda, TQ3MsgIcon::Question, TQ3MsgButtons::YesNoCancel)) {
    case TQ3MsgResult::Yes:
        return salva();
    case TQ3MsgResult::No:
        if (abbandona)
            abbandona();
        return true;
    default:
        return false;
    }
}

QLineEdit *Q3CampoTesto(const QString &name, int maxLength)
{
    auto edit = new QLineEdit;
    edit->setObjectName(name);
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    return edit;
}
