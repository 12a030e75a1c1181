#include "Q3MenuAmministrazione.h"

#include "Q3Guards.h"
#include "Q3MainForm.h"
#include "Q3Messages.h"
#include "Q3Ruoli.h"

QMenu *Q3CreaMenuAmministrazione(TQ3MainForm *form, const QList<TQ3ComandoAmministrazione> &comandi,
                                 const std::function<bool()> &isAdministrator)
{
    auto menu = new QMenu(QStringLiteral("Amministrazione"), form);
    menu->setObjectName(QStringLiteral("mnAmministrazione"));
    for (const TQ3ComandoAmministrazione &comando : comandi) {
        if (comando.Nome.isEmpty()) {
            menu->addSeparator();
            continue;
        }
        QAction *action = menu->addAction(comando.Caption);
        action->setObjectName(comando.Nome);
        QObject::connect(action, &QAction::triggered, menu, [comando, isAdministrator] {
            Q3Guarded([&] {
                if (comando.SoloAmministratori && !isAdministrator()) {
                    Q3MessageBox(QStringLiteral("Attenzione"), QString::fromUtf8(Q3MsgDirittiInsufficienti),
                                 TQ3MsgIcon::Warning);
                    return;
                }
                comando.Esegui();
            });
        });
    }
    form->InsertTopMenu(menu);
    return menu;
}
