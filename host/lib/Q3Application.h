#pragma once

#include "Q3Global.h"

#include <QApplication>

// The host's application object. Its event delivery is the last net under
// every handler: a failure that no window caught is shown with its own
// message in the "Errore" box, and the event loop goes on, with the windows
// and whatever they hold.
class Q3_EXPORT TQ3Application : public QApplication
{
    Q_OBJECT

public:
    TQ3Application(int &argc, char **argv);
    ~TQ3Application() override;

    bool notify(QObject *receiver, QEvent *event) override;
};
