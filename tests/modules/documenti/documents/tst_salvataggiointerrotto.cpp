// Invoices saved by a process that is killed at random moments, on an
// embedded database file: after each kill every invoice is whole.
#include "KRVSalvataggioInterrotto.h"

class TestSalvataggioInterrotto : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); }
    void fattureIntereDopoOgniUccisione();
};

// The file is one process's at a time (the engine's default mode): the test
// opens it only between kills.
void TestSalvataggioInterrotto::fattureIntereDopoOgniUccisione()
{
    KRVVerificaSalvataggiInterrotti(TQ3TestDatabase::Where::Embedded, 100);
}

int main(int argc, char **argv)
{
    return KRVMainSalvataggioInterrotto<TestSalvataggioInterrotto>(argc, argv);
}

#include "tst_salvataggiointerrotto.moc"
