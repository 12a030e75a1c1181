#include "Q3AdminKit.h"

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

QLineEdit *Q3CampoTesto(const QString &name, int maxLength)
{
    auto edit = new QLineEdit;
    edit->setObjectName(name);
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    return edit;
}
