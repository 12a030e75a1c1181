#include "uKRVFormKit.h"

#include "KRVPermissions.h"
#include "KRVSession.h"
#include "KRVTesti.h"
#include "Q3Messages.h"
#include "Q3Packages.h"
#include "Q3Users.h"

#include "Q3Guards.h"
#include "uKRVImages.h"

#include <QPlainTextEdit>
#include <QValidator>

namespace {

// Keeps what is typed or set as its column can take it: in capitals when
// asked, and never with half a character at the end, where the field's length
// limit cuts a pasted text even between the two halves of a surrogate pair.
class TKRVTestoValidator : public QValidator
{
public:
    TKRVTestoValidator(bool upperCase, QObject *owner) : QValidator(owner), m_upperCase(upperCase) {}

    State validate(QString &input, int &pos) const override
    {
        if (m_upperCase)
            input = KRVMaiuscole(input);
        if (!input.isEmpty() && input.back().isHighSurrogate()) {
            input.chop(1);
            pos = qMin(pos, int(input.size()));
        }
        return Acceptable;
    }

private:
    bool m_upperCase;
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
    if (maxLength > 0 || upperCase)
        edit->setValidator(new TKRVTestoValidator(upperCase, edit));
    edit->setFixedWidth(FieldWidth(edit, maxLength));
    return edit;
}

bool KRVTestoCercabile(const QString &testo)
{
    const QString caratteri = KRVCaratteriNonAmmessi(testo);
    if (caratteri.isEmpty())
        return true;
    Q3ShowWarning(QStringLiteral("Il testo da cercare contiene caratteri non ammessi: ") + caratteri
                  + QLatin1Char('.'));
    return false;
}

QString KRVTestoNonAmmesso(const QString &etichetta, const QString &testo)
{
    const QString caratteri = KRVCaratteriNonAmmessi(testo);
    if (caratteri.isEmpty())
        return {};
    return QStringLiteral("Il campo \"") + etichetta + QStringLiteral("\" contiene caratteri non ammessi: ") + caratteri
           + QLatin1Char('.');
}

QString KRVCampoNonAmmesso(const QWidget *window)
{
    for (const QLineEdit *edit : window->findChildren<QLineEdit *>()) {
        if (QString problema = KRVTestoNonAmmesso(edit->accessibleName(), edit->text()); !problema.isEmpty())
            return problema;
    }
    for (const QPlainTextEdit *memo : window->findChildren<QPlainTextEdit *>()) {
        if (QString problema = KRVTestoNonAmmesso(memo->accessibleName(), memo->toPlainText()); !problema.isEmpty())
            return problema;
    }
    return {};
}

bool KRVVerificaPermesso(const QString &permesso)
{
    if (permesso.isEmpty() || UserHasAbilitazione(permesso, GetQ3CurrentUserName(), KRVSessioneModulo()))
        return true;
    Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(KRVMsgDirittiInsufficienti), TQ3MsgIcon::Warning);
    return false;
}

QSqlDatabase KRVSessioneModulo()
{
    const int index = GetPackageIndex(KRVModuleFileName());
    auto session = index < 0 ? nullptr : dynamic_cast<IKRVModuleSession *>(PackageList().at(index).MainObject);
    if (!session)
        throw EQ3Exception(QStringLiteral("Il modulo documenti non è caricato."));
    return session->ModADOConn()->Database();
}
