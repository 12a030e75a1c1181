#include "Q3Exception.h"

EQ3Exception::EQ3Exception(const QString &message) : std::runtime_error(message.toStdString()), m_message(message) {}

QString ExceptionMessage(const std::exception &e)
{
    if (auto q3 = dynamic_cast<const EQ3Exception *>(&e))
        return q3->Message();
    return QString::fromUtf8(e.what());
}
