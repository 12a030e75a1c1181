#include "KRVEsportazioneFatturePA.h"

#include "Q3Exception.h"
#include "Q3Sql.h"
#include "Q3ZipWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <memory>

TKRVEsportazioneFatturePA KRVEsportaFatturePA(const QSqlDatabase &db, EKRVDocumentoFatturaPA tipo,
                                              const QList<int> &ids, const TKRVDestinazioneFatturePA &destinazione,
                                              const TKRVAvanzamentoFatturePA &avanzamento)
{
    std::unique_ptr<TQ3ZipWriter> zip;
    if (destinazione.Zip) {
        if (QFileInfo::exists(destinazione.Percorso))
            throw EQ3Exception(QStringLiteral("Il file \"%1\" esiste già: indicarne uno nuovo.")
                                   .arg(QDir::toNativeSeparators(destinazione.Percorso)));
        zip = std::make_unique<TQ3ZipWriter>(destinazione.Percorso);
    } else if (!QFileInfo(destinazione.Percorso).isDir()) {
        throw EQ3Exception(
            QStringLiteral("La cartella \"%1\" non esiste.").arg(QDir::toNativeSeparators(destinazione.Percorso)));
    }
    TKRVEsportazioneFatturePA esito;
    QList<TKRVFileFatturaPA> scritti;
    const QDir cartella(destinazione.Percorso);
    const auto rimuoviFileScritti = [&] {
        if (zip)
            return;
        for (const TKRVFileFatturaPA &file : std::as_const(scritti))
            QFile::remove(cartella.filePath(file.Nome));
    };
    try {
        // One transaction for the whole export: the documents read from one
        // snapshot, and recorded together at the end.
        TQ3Transaction transazione(db);
        TKRVLettoreFatturaPA lettore(db, tipo);
        for (int i = 0; i < ids.size(); ++i) {
            TKRVEsitoFatturaPA documento;
            documento.Id = ids.at(i);
            TKRVFatturaPAVerificata verificata;
            try {
                verificata = KRVVerificaFatturaPA(lettore, documento.Id);
            } catch (const EQ3Exception &e) {
                verificata.Errori << QStringLiteral("Documento %1: %2").arg(documento.Id).arg(e.Message());
            }
            documento.Documento = KRVNomeDocumentoFatturaPA(verificata.Dati);
            if (verificata.Errori.isEmpty()) {
                int progressivo = 0;
                documento.NomeFile = KRVNumeraFatturaPA(db, verificata, progressivo);
                if (zip)
                    zip->Add(documento.NomeFile, verificata.Xml);
                else
                    KRVScriviFileFatturaPA(cartella.filePath(documento.NomeFile), verificata.Xml);
                scritti.append({documento.Id, documento.NomeFile, progressivo});
                esito.Scritte.append(documento);
            } else {
                documento.Errori = verificata.Errori;
                esito.Rifiutate.append(documento);
            }
            if (avanzamento && !avanzamento(i + 1, int(ids.size()))) {
                esito.NonEsaminate = int(ids.size()) - i - 1;
                break;
            }
        }
        if (zip)
            zip->Close();
        KRVRegistraFatturePA(db, tipo, scritti);
        transazione.Commit();
    } catch (...) {
        // Files no document records would be sent without a trace.
        rimuoviFileScritti();
        if (zip)
            QFile::remove(destinazione.Percorso);
        throw;
    }
    return esito;
}

QString KRVRiepilogoEsportazione(const TKRVEsportazioneFatturePA &esito)
{
    QStringList righe{QStringLiteral("Fatture elettroniche scritte: %1").arg(esito.Scritte.size()),
                      QStringLiteral("Documenti rifiutati: %1").arg(esito.Rifiutate.size())};
    if (esito.NonEsaminate > 0)
        righe << QStringLiteral("Documenti non esaminati (esportazione interrotta): %1").arg(esito.NonEsaminate);
    if (!esito.Rifiutate.isEmpty()) {
        righe << QString() << QStringLiteral("Da correggere:");
        for (const TKRVEsitoFatturaPA &documento : esito.Rifiutate) {
            for (const QString &errore : documento.Errori)
                righe << QStringLiteral("- ") + errore;
        }
    }
    if (!esito.Scritte.isEmpty()) {
        righe << QString() << QStringLiteral("File scritti:");
        for (const TKRVEsitoFatturaPA &documento : esito.Scritte)
            righe << documento.Documento + QStringLiteral(": ") + documento.NomeFile;
    }
    return righe.join(QLatin1Char('\n'));
}
