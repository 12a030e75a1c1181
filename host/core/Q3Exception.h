#pragma once

#include "Q3Global.h"

#include <QString>
#include <stdexcept>

// The one failure type of the application: a message meant for the user.
class Q3_EXPORT EQ3Exception : public std::runtime_error
{
public:
    explicit EQ3Exception(const QString &message);
    QString Message() const { return m_message; }

private:
    QString m_message;
};

// The message of any caught failure, whatever its type.
Q3_EXPORT QString ExceptionMessage(const std::exception &e);

// A refusal by a rule of the application (shown as a warning, "Attenzione"),
// unlike a failure (shown as an error, "Errore").
class Q3_EXPORT EQ3Rifiuto : public EQ3Exception
{
public:
    using EQ3Exception::EQ3Exception;
};
