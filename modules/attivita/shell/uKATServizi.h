#pragma once

#include <QSqlDatabase>

// What the module's windows ask of its main object.
class IKATMain
{
public:
    virtual ~IKATMain() = default;
    // The module's database session.
    virtual QSqlDatabase Sessione() const = 0;
    // Whether the logged-in user holds the right; when not, says so in a box
    // titled "Attenzione" and answers false.
    virtual bool VerificaDiritto(const char *diritto) const = 0;
    // Asks the sales documents module for a new invoice copying the recurring
    // one of the reminder; the reminder is done once that invoice is saved.
    virtual void GeneraFattura(int idPromemoria) = 0;
};
