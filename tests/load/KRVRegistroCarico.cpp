#include "KRVRegistroCarico.h"

#include "Q3Exception.h"

#include <QFile>
#include <QRegularExpression>

namespace {

// A message keeps to its field: no tab, no line break.
QString UnaRiga(QString testo)
{
    static const QRegularExpression separatori(QStringLiteral("[\t\r\n]+"));
    return testo.replace(separatori, QStringLiteral(" "));
}

} // namespace

QString KRVNotaCarico(const QString &segno, int righe)
{
    return segno + QLatin1Char('|') + QString::number(righe);
}

bool KRVLeggiNotaCarico(const QString &nota, QString &segno, int &righe)
{
    static const QRegularExpression forma(QStringLiteral("^(P\\d+\\.\\d+)\\|(\\d+)$"));
    const QRegularExpressionMatch trovata = forma.match(nota);
    if (!trovata.hasMatch())
        return false;
    segno = trovata.captured(1);
    righe = trovata.captured(2).toInt();
    return true;
}

QString KRVDescrizioneCarico(const QString &segno, int riga)
{
    return segno + QStringLiteral(" riga ") + QString::number(riga);
}

void KRVScriviRichiesta(QTextStream &out, const TKRVRichiestaCarico &r)
{
    out << r.Postazione << '\t' << r.Operazione << '\t' << r.Documento << '\t' << r.Id << '\t' << r.Numero << '\t'
        << r.Inizio << '\t' << r.Fine << '\t' << r.Esito << '\t' << r.Righe << '\t' << r.Segno << '\t'
        << UnaRiga(r.Messaggio) << '\n';
}

QList<TKRVRichiestaCarico> KRVLeggiRichieste(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw EQ3Exception(QStringLiteral("Impossibile leggere ") + fileName);
    QList<TKRVRichiestaCarico> richieste;
    QTextStream in(&file);
    QString riga;
    while (in.readLineInto(&riga)) {
        const QStringList campi = riga.split(QLatin1Char('\t'));
        if (campi.size() != 11)
            throw EQ3Exception(QStringLiteral("Riga non valida in %1: %2").arg(fileName, riga));
        richieste.append({campi[0].toInt(), campi[1], campi[2], campi[3].toInt(), campi[4].toInt(),
                          campi[5].toLongLong(), campi[6].toLongLong(), campi[7], campi[8].toInt(), campi[9],
                          campi[10]});
    }
    return richieste;
}
