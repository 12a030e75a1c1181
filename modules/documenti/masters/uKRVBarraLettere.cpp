#include "uKRVBarraLettere.h"

#include "Q3Guards.h"

#include <QAction>

namespace {

const QString Tutte = QStringLiteral("*");

} // namespace

TKRVBarraLettere::TKRVBarraLettere(QWidget *owner, const std::function<void(const QString &letter)> &handler)
    : QToolBar(owner)
{
    setObjectName(QStringLiteral("tBarLettere"));
    setMovable(false);
    setFloatable(false);
    setToolButtonStyle(Qt::ToolButtonTextOnly);
    for (const QChar letter : Alfabeto()) {
        const QString text(letter);
        QAction *action = addAction(text);
        action->setObjectName(QStringLiteral("actLettera") + (text == Tutte ? QStringLiteral("Tutte") : text));
        connect(action, &QAction::triggered, this, [handler, text] { Q3Guarded([&] { handler(text); }); });
    }
}
