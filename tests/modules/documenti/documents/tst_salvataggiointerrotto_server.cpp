// Invoices saved by a client that is killed at random moments, on a database
// of the Firebird server: after each kill every invoice is whole.
#include "KRVSalvataggioInterrotto.h"

class TestSalvataggioInterrottoServer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy)); }
    void init();
    void fattureIntereDopoOgniUccisione();
};

void TestSalvataggioInterrottoServer::init()
{
    Q3_REQUIRE_TEST_SERVER();
}

// Each save goes over the network statement by statement, so fewer kills
// fit in the suite's time than on a file.
void TestSalvataggioInterrottoServer::fattureIntereDopoOgniUccisione()
{
    KRVVerificaSalvataggiInterrotti(TQ3TestDatabase::Where::Server, 40);
}

int main(int argc, char **argv)
{
    return KRVMainSalvataggioInterrotto<TestSalvataggioInterrottoServer>(argc, argv);
}

#include "tst_salvataggiointerrotto_server.moc"
