#include "uKRVFormKit.h"

#include "KRVPermissions.h"
#include "KRVSession.h"
#include "Q3Messages.h"
#include "Q3Users.h"

#include "Q3Guards.h"
#include "uKRVImages.h"

#include <QValidator>

namespace {

// Turns whatever is typed or set into capitals.
class TKRVUpperCaseValidator : public QValidator
{
public:
    using QValidator::QValidator;

    State validate(QString &input, int &) const override
    {
        input = input.toUpper();
        return Acceptable;
    }
};

// Wide enough for its longest text, within sensible bounds.
int FieldWidth(const QLineEdit *edit, int maxLength)
{
    const int chars = maxLength > 0 ? maxLength : 40;
    return qBound(60, edit->fontMetrics().horizontalAdvance(QLatin1Char('W')) * (chars + 1) / 2 + 16, 420);
}

} // namespace

QToolBar *KRVCreaToolBar(QWidget *owner, const QString &name)
{
    auto bar = new QToolBar(owner);
    bar->setObjectName(name);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setIconSize(QSize(16, 16));
    return bar;
}

QAction *KRVCreaAzione(QWidget *owner, const QString &name, const QString &caption, int image,
                       std::function<void()> handler)
{
    auto action = new QAction(KRVImage(image), caption, owner);
    action->setObjectName(name);
    owner->addAction(action);
    QObject::connect(action, &QAction::triggered, owner, [handler = std::move(handler)] { Q3Guarded(handler); });
    return action;
}

QLabel *KRVEtichetta(const QString &caption, QWidget *field)
{
    auto label = new QLabel(caption);
    label->setObjectName(QStringLiteral("lbl") + field->objectName());
    label->setBuddy(field);
    field->setAccessibleName(caption);
    return label;
}

QLineEdit *KRVCampoTesto(const QString &name, int maxLength, bool upperCase)
{
    auto edit = new QLineEdit;
    edit->setObjectName(name);
    if (maxLength > 0)
        edit->setMaxLength(maxLength);
    if (upperCase)
        edit->setValidator(new TKRVUpperCaseValidator(edit));
    edit->setFixedWidth(FieldWidth(edit, maxLength));
    return edit;
}

bool KRVVerificaPermesso(const QString &permesso)
{
    if (permesso.isEmpty() || UserHasAbilitazione(permesso, GetQ3CurrentUserName(), KRVModuleDatabase()))
        return true;
    Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(KRVMsgDirittiInsufficienti), TQ3MsgIcon::Warning);
    return false;
}
