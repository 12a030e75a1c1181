#include "KRVDatiItaliani.h"

#include "KRVCasuale.h"

#include <QPair>

namespace {

QStringList Lista(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list << QString::fromUtf8(text);
    return list;
}

// Values of the characters at odd places (first, third...) in the tax code and
// bank check character; letters and digits share them.
int ValoreDispari(QChar c)
{
    static const int values[26] = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                   20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    const int index = c.isDigit() ? c.digitValue() : c.toLatin1() - 'A';
    return values[index];
}

int ValorePari(QChar c)
{
    return c.isDigit() ? c.digitValue() : c.toLatin1() - 'A';
}

QChar CarattereControllo(const QString &text)
{
    int sum = 0;
    for (int i = 0; i < text.size(); ++i)
        sum += i % 2 == 0 ? ValoreDispari(text.at(i)) : ValorePari(text.at(i));
    return QChar(QLatin1Char(char('A' + sum % 26)));
}

QString SoloLettere(const QString &text)
{
    QString letters;
    for (const QChar c : text.toUpper()) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            letters += c;
    }
    return letters;
}

bool Vocale(QChar c)
{
    return QStringLiteral("AEIOU").contains(c);
}

QString Consonanti(const QString &letters)
{
    QString result;
    for (const QChar c : letters) {
        if (!Vocale(c))
            result += c;
    }
    return result;
}

QString Vocali(const QString &letters)
{
    QString result;
    for (const QChar c : letters) {
        if (Vocale(c))
            result += c;
    }
    return result;
}

QString TreLettere(const QString &consonanti, const QString &vocali)
{
    return (consonanti + vocali + QStringLiteral("XXX")).left(3);
}

QString Cifre(TKRVCasuale &casuale, int count)
{
    QString digits;
    for (int i = 0; i < count; ++i)
        digits += QChar(QLatin1Char(char('0' + casuale.Intero(0, 9))));
    return digits;
}

// The remainder by 97 of a long number written in decimal digits.
int Modulo97(const QString &digits)
{
    int rest = 0;
    for (const QChar c : digits)
        rest = (rest * 10 + c.digitValue()) % 97;
    return rest;
}

} // namespace

namespace KRVDati {

const QList<TKRVComune> &Comuni()
{
    static const QList<TKRVComune> comuni = [] {
        const char *rows[][4] = {
            {"Milano", "20121", "MI", "02"},
            {"Roma", "00184", "RM", "06"},
            {"Torino", "10121", "TO", "011"},
            {"Napoli", "80133", "NA", "081"},
            {"Bologna", "40121", "BO", "051"},
            {"Firenze", "50122", "FI", "055"},
            {"Bergamo", "24121", "BG", "035"},
            {"Brescia", "25121", "BS", "030"},
            {"Verona", "37121", "VR", "045"},
            {"Padova", "35121", "PD", "049"},
            {"Venezia", "30121", "VE", "041"},
            {"Treviso", "31100", "TV", "0422"},
            {"Vicenza", "36100", "VI", "0444"},
            {"Genova", "16121", "GE", "010"},
            {"Parma", "43121", "PR", "0521"},
            {"Modena", "41121", "MO", "059"},
            {"Reggio Emilia", "42121", "RE", "0522"},
            {"Piacenza", "29121", "PC", "0523"},
            {"Como", "22100", "CO", "031"},
            {"Varese", "21100", "VA", "0332"},
            {"Monza", "20900", "MB", "039"},
            {"Lecco", "23900", "LC", "0341"},
            {"Cremona", "26100", "CR", "0372"},
            {"Mantova", "46100", "MN", "0376"},
            {"Pavia", "27100", "PV", "0382"},
            {"Novara", "28100", "NO", "0321"},
            {"Alessandria", "15121", "AL", "0131"},
            {"Cuneo", "12100", "CN", "0171"},
            {"Asti", "14100", "AT", "0141"},
            {"Trento", "38122", "TN", "0461"},
            {"Bolzano", "39100", "BZ", "0471"},
            {"Udine", "33100", "UD", "0432"},
            {"Trieste", "34121", "TS", "040"},
            {"Ancona", "60121", "AN", "071"},
            {"Perugia", "06121", "PG", "075"},
            {"Pisa", "56125", "PI", "050"},
            {"Livorno", "57123", "LI", "0586"},
            {"Lucca", "55100", "LU", "0583"},
            {"Siena", "53100", "SI", "0577"},
            {"Arezzo", "52100", "AR", "0575"},
            {"Rimini", "47921", "RN", "0541"},
            {"Ravenna", "48121", "RA", "0544"},
            {"Ferrara", "44121", "FE", "0532"},
            {"Forlì", "47121", "FC", "0543"},
            {"Pescara", "65121", "PE", "085"},
            {"Bari", "70121", "BA", "080"},
            {"Lecce", "73100", "LE", "0832"},
            {"Taranto", "74121", "TA", "099"},
            {"Salerno", "84121", "SA", "089"},
            {"Caserta", "81100", "CE", "0823"},
            {"Palermo", "90133", "PA", "091"},
            {"Catania", "95131", "CT", "095"},
            {"Messina", "98122", "ME", "090"},
            {"Cagliari", "09124", "CA", "070"},
            {"Sassari", "07100", "SS", "079"},
            {"Reggio Calabria", "89125", "RC", "0965"},
            {"Cosenza", "87100", "CS", "0984"},
            {"Latina", "04100", "LT", "0773"},
            {"Frosinone", "03100", "FR", "0775"},
            {"Viterbo", "01100", "VT", "0761"},
            {"L'Aquila", "67100", "AQ", "0862"},
            {"Sesto San Giovanni", "20099", "MI", "02"},
            {"Cinisello Balsamo", "20092", "MI", "02"},
            {"Busto Arsizio", "21052", "VA", "0331"},
            {"Seriate", "24068", "BG", "035"},
            {"Dalmine", "24044", "BG", "035"},
            {"Castelfranco Veneto", "31033", "TV", "0423"},
            {"Carpi", "41012", "MO", "059"},
            {"Sassuolo", "41049", "MO", "0536"},
            {"Empoli", "50053", "FI", "0571"},
            {"Prato", "59100", "PO", "0574"},
            {"Pistoia", "51100", "PT", "0573"},
        };
        QList<TKRVComune> list;
        for (const auto &row : rows)
            list.append({QString::fromUtf8(row[0]), QString::fromLatin1(row[1]), QString::fromLatin1(row[2]),
                         QString::fromLatin1(row[3])});
        return list;
    }();
    return comuni;
}

const QStringList &Cognomi()
{
    static const QStringList list = Lista(
        {"Rossi",      "Russo",     "Ferrari",   "Esposito",   "Bianchi",    "Romano",    "Colombo",    "Ricci",
         "Marino",     "Greco",     "Bruno",     "Gallo",      "Conti",      "De Luca",   "Mancini",    "Costa",
         "Giordano",   "Rizzo",     "Lombardi",  "Moretti",    "Barbieri",   "Fontana",   "Santoro",    "Mariani",
         "Rinaldi",    "Caruso",    "Ferrara",   "Galli",      "Martini",    "Leone",     "Longo",      "Gentile",
         "Martinelli", "Vitale",    "Lombardo",  "Serra",      "Coppola",    "De Santis", "D'Angelo",   "Marchetti",
         "Parisi",     "Villa",     "Conte",     "Ferraro",    "Ferri",      "Fabbri",    "Bianco",     "Marini",
         "Grasso",     "Valentini", "Messina",   "Sala",       "De Angelis", "Gatti",     "Pellegrini", "Palumbo",
         "Sanna",      "Farina",    "Rizzi",     "Monti",      "Cattaneo",   "Morelli",   "Amato",      "Silvestri",
         "Mazza",      "Testa",     "Grassi",    "Pellegrino", "Carbone",    "Giuliani",  "Benedetti",  "Barone",
         "Rossetti",   "Caputo",    "Montanari", "Guerra",     "Palmieri",   "Bernardi",  "Martino",    "Fiore",
         "De Rosa",    "Ferretti",  "Bellini",   "Basile",     "Riva",       "Donati",    "Piras",      "Vitali",
         "Battaglia",  "Sartori",   "Neri",      "Costantini", "Milani",     "Pagano",    "Ruggiero",   "Sorrentino",
         "D'Amico",    "Orlando",   "Damico",    "Negri"});
    return list;
}

const QStringList &NomiMaschili()
{
    static const QStringList list =
        Lista({"Marco",    "Giuseppe", "Luca",    "Andrea",   "Francesco", "Alessandro", "Giovanni",
               "Roberto",  "Stefano",  "Paolo",   "Matteo",   "Davide",    "Simone",     "Antonio",
               "Fabio",    "Massimo",  "Claudio", "Riccardo", "Lorenzo",   "Alberto",    "Daniele",
               "Federico", "Enrico",   "Giorgio", "Mario",    "Pietro",    "Sergio",     "Emanuele"});
    return list;
}

const QStringList &NomiFemminili()
{
    static const QStringList list =
        Lista({"Giulia",     "Francesca", "Chiara",   "Sara",    "Laura",  "Valentina", "Elena",
               "Alessandra", "Silvia",    "Federica", "Martina", "Paola",  "Roberta",   "Anna",
               "Maria",      "Elisa",     "Cristina", "Barbara", "Monica", "Daniela",   "Simona",
               "Claudia",    "Marta",     "Serena",   "Giorgia", "Ilaria", "Beatrice",  "Irene"});
    return list;
}

const QStringList &AttivitaAziende()
{
    static const QStringList list =
        Lista({"Costruzioni",          "Edilizia",      "Impianti",        "Termoidraulica",      "Impianti Elettrici",
               "Serramenti",           "Arredamenti",   "Carpenteria",     "Falegnameria",        "Officina Meccanica",
               "Autotrasporti",        "Giardini",      "Restauri",        "Ristrutturazioni",    "Ferramenta",
               "Materiali Edili",      "Tecnoimpianti", "Climatizzazione", "Coperture",           "Pavimenti",
               "Serramenti e Infissi", "Carrozzeria",   "Manutenzioni",    "Servizi Industriali", "Metalmeccanica",
               "Lattoneria",           "Verniciature",  "Idraulica"});
    return list;
}

const QStringList &FormeSocietarie()
{
    static const QStringList list = Lista({"S.r.l.", "S.r.l.", "S.r.l.", "S.n.c.", "S.a.s.", "S.p.A.", "S.r.l.s."});
    return list;
}

const QStringList &Vie()
{
    static const QStringList list = Lista({"Roma",
                                           "Giuseppe Garibaldi",
                                           "Giuseppe Mazzini",
                                           "Dante Alighieri",
                                           "XX Settembre",
                                           "Vittorio Emanuele II",
                                           "Camillo Benso di Cavour",
                                           "della Repubblica",
                                           "IV Novembre",
                                           "Giacomo Matteotti",
                                           "Antonio Gramsci",
                                           "Alessandro Manzoni",
                                           "Giuseppe Verdi",
                                           "Marconi",
                                           "dell'Industria",
                                           "dell'Artigianato",
                                           "del Lavoro",
                                           "Leonardo da Vinci",
                                           "Galileo Galilei",
                                           "Cesare Battisti",
                                           "Aldo Moro",
                                           "Europa",
                                           "delle Rimembranze",
                                           "San Francesco",
                                           "Monte Grappa",
                                           "Trieste",
                                           "Trento",
                                           "Milano",
                                           "Torino",
                                           "dei Mille",
                                           "Nazionale",
                                           "Provinciale",
                                           "della Stazione",
                                           "Papa Giovanni XXIII",
                                           "Luigi Einaudi",
                                           "Sandro Pertini",
                                           "1° Maggio",
                                           "Enrico Fermi",
                                           "Alessandro Volta",
                                           "Fratelli Bandiera"});
    return list;
}

const QStringList &TipiVia()
{
    static const QStringList list = Lista({"Via", "Via", "Via", "Via", "Viale", "Piazza", "Corso", "Largo", "Vicolo"});
    return list;
}

const QList<TKRVBanca> &Banche()
{
    static const QList<TKRVBanca> list = [] {
        const char *rows[][3] = {
            {"Intesa Sanpaolo", "03069", "BCITITMM"},
            {"UniCredit", "02008", "UNCRITMM"},
            {"Banco BPM", "05034", "BAPPIT21"},
            {"BPER Banca", "05387", "BPMOIT22"},
            {"Monte dei Paschi di Siena", "01030", "PASCITMM"},
            {"Crédit Agricole Italia", "06230", "CRPPIT2P"},
            {"Banca Popolare di Sondrio", "05696", "POSOIT22"},
            {"Banca Sella", "03268", "SELBIT2B"},
            {"Credem", "03032", "BACRIT22"},
            {"Banca Mediolanum", "03062", "MEDBITMM"},
        };
        QList<TKRVBanca> banks;
        for (const auto &row : rows)
            banks.append({QString::fromUtf8(row[0]), QString::fromLatin1(row[1]), QString::fromLatin1(row[2])});
        return banks;
    }();
    return list;
}

const QList<TKRVCategoriaBase> &CategorieArticoli()
{
    static const QList<TKRVCategoriaBase> list = [] {
        const QStringList metalli =
            Lista({"acciaio zincato", "acciaio inox A2", "acciaio inox A4", "ottone", "acciaio brunito"});
        const QStringList colori = Lista({"bianco", "nero", "grigio", "rosso", "verde", "blu", "avorio", "marrone"});
        const QStringList plastiche = Lista({"nylon", "PVC", "polipropilene", "ABS"});
        return QList<TKRVCategoriaBase>{
            {QStringLiteral("Ferramenta"),
             QStringLiteral("FER"),
             {{QStringLiteral("Viteria"),
               Lista({"Vite legno testa svasata", "Vite autofilettante", "Vite metrica TE", "Bullone TCEI",
                      "Vite per cartongesso"}),
               metalli, Lista({"3x16", "3,5x25", "4x30", "4x40", "5x50", "6x60", "M6x20", "M8x30", "M10x50"}),
               QStringLiteral("CF"), 250, 2500, QStringLiteral("22")},
              {QStringLiteral("Tasselli"),
               Lista({"Tassello universale", "Tassello chimico", "Tassello metallico", "Tassello per cartongesso"}),
               plastiche, Lista({"Ø 6 mm", "Ø 8 mm", "Ø 10 mm", "Ø 12 mm"}), QStringLiteral("CF"), 180, 3500,
               QStringLiteral("22")},
              {QStringLiteral("Serrature"),
               Lista({"Serratura da infilare", "Cilindro europeo", "Lucchetto", "Serratura elettrica"}),
               Lista({"ottone", "acciaio", "nichelato"}), Lista({"30-30", "35-45", "40 mm", "50 mm", "60 mm"}),
               QStringLiteral("PEZZI"), 650, 8900, QStringLiteral("22")},
              {QStringLiteral("Cerniere"),
               Lista({"Cerniera anuba", "Cerniera a scomparsa", "Cardine a murare", "Cerniera per mobili"}), metalli,
               Lista({"Ø 13 mm", "Ø 14 mm", "35 mm", "60x60"}), QStringLiteral("PEZZI"), 90, 1800,
               QStringLiteral("22")},
              {QStringLiteral("Chiodi e graffe"), Lista({"Chiodo testa piana", "Chiodo per calcestruzzo", "Graffetta"}),
               metalli, Lista({"20 mm", "30 mm", "50 mm", "70 mm"}), QStringLiteral("KG"), 300, 1400,
               QStringLiteral("22")}}},
            {QStringLiteral("Utensileria"),
             QStringLiteral("UTE"),
             {{QStringLiteral("Utensili manuali"),
               Lista({"Martello da carpentiere", "Cacciavite a taglio", "Cacciavite a croce", "Pinza universale",
                      "Chiave combinata", "Chiave a brugola"}),
               Lista({"impugnatura bimateriale", "professionale", "cromo vanadio"}),
               Lista({"PH1", "PH2", "5,5 mm", "13 mm", "17 mm", "500 g"}), QStringLiteral("PEZZI"), 390, 4500,
               QStringLiteral("22")},
              {QStringLiteral("Elettroutensili"),
               Lista({"Trapano a percussione", "Avvitatore a batteria", "Smerigliatrice angolare",
                      "Seghetto alternativo", "Tassellatore"}),
               Lista({"18 V", "12 V", "850 W", "1100 W", "con valigetta"}),
               Lista({"2 batterie", "Ø 115 mm", "Ø 125 mm", "SDS Plus"}), QStringLiteral("PEZZI"), 4900, 39900,
               QStringLiteral("22")},
              {QStringLiteral("Strumenti di misura"),
               Lista({"Flessometro", "Livella a bolla", "Calibro a corsoio", "Metro laser"}),
               Lista({"professionale", "magnetico", "digitale"}), Lista({"3 m", "5 m", "8 m", "60 cm", "150 mm"}),
               QStringLiteral("PEZZI"), 450, 12900, QStringLiteral("22")}}},
            {QStringLiteral("Materiale elettrico"),
             QStringLiteral("ELE"),
             {{QStringLiteral("Cavi"),
               Lista({"Cavo unipolare FS17", "Cavo tripolare FG16OR16", "Cavo per antenna", "Cavo di rete Cat. 6"}),
               colori, Lista({"1,5 mmq", "2,5 mmq", "4 mmq", "6 mmq"}), QStringLiteral("MT"), 35, 420,
               QStringLiteral("22")},
              {QStringLiteral("Illuminazione"),
               Lista({"Lampada LED", "Plafoniera LED", "Faretto LED", "Proiettore LED"}),
               Lista({"luce calda", "luce naturale", "luce fredda"}),
               Lista({"E27 10 W", "GU10 6 W", "18 W", "36 W", "50 W IP65"}), QStringLiteral("PEZZI"), 290, 8900,
               QStringLiteral("22")},
              {QStringLiteral("Apparecchi civili"),
               Lista({"Interruttore", "Deviatore", "Presa bipasso", "Presa Schuko", "Pulsante"}), colori,
               Lista({"10 A", "16 A", "1 modulo", "2 moduli"}), QStringLiteral("PEZZI"), 190, 1600,
               QStringLiteral("22")},
              {QStringLiteral("Quadri e protezioni"),
               Lista({"Interruttore magnetotermico", "Interruttore differenziale", "Centralino da parete"}),
               Lista({"curva C", "tipo A", "tipo AC", "IP40"}), Lista({"1P+N 16 A", "2P 25 A", "4P 40 A", "12 moduli"}),
               QStringLiteral("PEZZI"), 890, 15900, QStringLiteral("22")}}},
            {QStringLiteral("Idraulica"),
             QStringLiteral("IDR"),
             {{QStringLiteral("Raccorderia"),
               Lista({"Raccordo a pressare", "Gomito 90°", "Manicotto", "Raccordo a T", "Nipplo"}),
               Lista({"ottone", "ghisa zincata", "multistrato"}), Lista({"1/2\"", "3/4\"", "1\"", "16x2", "20x2"}),
               QStringLiteral("PEZZI"), 120, 2200, QStringLiteral("22")},
              {QStringLiteral("Tubi"),
               Lista({"Tubo multistrato", "Tubo in PVC", "Tubo in rame", "Tubo in polietilene"}),
               Lista({"isolato", "nudo", "per scarico"}), Lista({"16x2", "20x2", "26x3", "Ø 40", "Ø 110"}),
               QStringLiteral("MT"), 110, 1500, QStringLiteral("22")},
              {QStringLiteral("Rubinetteria"),
               Lista({"Miscelatore lavabo", "Miscelatore doccia", "Rubinetto a sfera", "Valvola di ritegno"}),
               Lista({"cromato", "ottone", "satinato"}), Lista({"1/2\"", "3/4\"", "monocomando", "con scarico"}),
               QStringLiteral("PEZZI"), 690, 18900, QStringLiteral("22")}}},
            {QStringLiteral("Edilizia"),
             QStringLiteral("EDI"),
             {{QStringLiteral("Cementi e malte"),
               Lista({"Cemento Portland", "Malta premiscelata", "Stucco in polvere", "Adesivo per piastrelle"}),
               Lista({"grigio", "bianco", "rapido"}), Lista({"sacco 5 kg", "sacco 25 kg", "sacco 10 kg"}),
               QStringLiteral("Q.LI"), 690, 2900, QStringLiteral("22")},
              {QStringLiteral("Laterizi"), Lista({"Mattone pieno", "Blocco forato", "Tavella", "Coppo"}),
               Lista({"rosso", "naturale", "anticato"}), Lista({"25x12x5,5", "30x25x19", "50x25x6"}),
               QStringLiteral("PEZZI"), 35, 290, QStringLiteral("10")}}},
            {QStringLiteral("Vernici"),
             QStringLiteral("VER"),
             {{QStringLiteral("Smalti"), Lista({"Smalto all'acqua", "Smalto sintetico", "Antiruggine"}), colori,
               Lista({"0,75 l", "2,5 l", "5 l"}), QStringLiteral("LT"), 890, 5900, QStringLiteral("22")},
              {QStringLiteral("Idropitture"),
               Lista({"Idropittura traspirante", "Idropittura lavabile", "Pittura antimuffa"}), colori,
               Lista({"4 l", "10 l", "14 l"}), QStringLiteral("LT"), 1490, 8900, QStringLiteral("22")},
              {QStringLiteral("Pennelli e rulli"),
               Lista({"Pennello piatto", "Pennellessa", "Rullo in microfibra", "Rullo antigoccia"}),
               Lista({"setola naturale", "sintetico"}), Lista({"30 mm", "50 mm", "70 mm", "18 cm", "23 cm"}),
               QStringLiteral("PEZZI"), 190, 1490, QStringLiteral("22")}}},
            {QStringLiteral("Giardinaggio"),
             QStringLiteral("GIA"),
             {{QStringLiteral("Attrezzi da giardino"),
               Lista({"Forbice da potatura", "Rastrello", "Vanga", "Zappa", "Tosasiepi"}),
               Lista({"manico in legno", "manico in fibra", "professionale"}), Lista({"20 cm", "14 denti", "1,2 m"}),
               QStringLiteral("PEZZI"), 590, 6900, QStringLiteral("22")},
              {QStringLiteral("Irrigazione"),
               Lista({"Tubo da giardino", "Irrigatore oscillante", "Raccordo rapido", "Programmatore"}),
               Lista({"retinato", "antitorsione", "a batteria"}), Lista({"1/2\" 25 m", "5/8\" 50 m", "4 vie"}),
               QStringLiteral("PEZZI"), 250, 7900, QStringLiteral("22")},
              {QStringLiteral("Sementi e concimi"),
               Lista({"Concime granulare", "Terriccio universale", "Seme per prato"}),
               Lista({"biologico", "a lenta cessione"}), Lista({"1 kg", "5 kg", "20 l", "80 l"}),
               QStringLiteral("PEZZI"), 350, 3900, QStringLiteral("04")}}},
            {QStringLiteral("Antinfortunistica"),
             QStringLiteral("ANT"),
             {{QStringLiteral("Protezione"),
               Lista({"Guanti da lavoro", "Occhiali protettivi", "Cuffia antirumore", "Mascherina FFP2", "Elmetto"}),
               Lista({"nitrile", "pelle", "antiappannamento", "regolabile"}),
               Lista({"taglia 8", "taglia 9", "taglia 10", "conf. 10 pz"}), QStringLiteral("PEZZI"), 120, 2900,
               QStringLiteral("22")},
              {QStringLiteral("Calzature"),
               Lista({"Scarpa antinfortunistica S3", "Stivale in PVC", "Scarpa bassa S1P"}),
               Lista({"nero", "grigio", "blu"}), Lista({"n. 40", "n. 41", "n. 42", "n. 43", "n. 44", "n. 45"}),
               QStringLiteral("PEZZI"), 2900, 8900, QStringLiteral("22")}}},
            {QStringLiteral("Colle e sigillanti"),
             QStringLiteral("COL"),
             {{QStringLiteral("Sigillanti"),
               Lista({"Silicone acetico", "Silicone neutro", "Sigillante acrilico", "Schiuma poliuretanica"}), colori,
               Lista({"280 ml", "300 ml", "750 ml"}), QStringLiteral("PEZZI"), 290, 1190, QStringLiteral("22")},
              {QStringLiteral("Adesivi"),
               Lista({"Colla vinilica", "Colla a contatto", "Adesivo epossidico", "Colla istantanea"}),
               Lista({"rapida", "trasparente", "extra forte"}), Lista({"20 g", "125 ml", "1 kg"}),
               QStringLiteral("PEZZI"), 190, 1890, QStringLiteral("22")}}},
        };
    }();
    return list;
}

const QStringList &Marchi()
{
    static const QStringList list =
        Lista({"Linea Professionale", "Linea Hobby", "Serie Eco", "Fratelli Rinaldi", "Tecnoval", "Idrotecnica Nord",
               "Elettroforniture", "Metalplast", "Officine Bergamasche", "Utensilmec", "Verdeprato",
               "Colorificio Adriatico"});
    return list;
}

const QList<TKRVServizioBase> &CategorieServizi()
{
    static const QList<TKRVServizioBase> list = {
        {QStringLiteral("Installazioni"),
         Lista({"Installazione impianto elettrico", "Installazione caldaia a condensazione", "Montaggio serramenti",
                "Posa pavimenti", "Installazione climatizzatore", "Installazione impianto di allarme"}),
         QStringLiteral("ORE"), 2800, 4800},
        {QStringLiteral("Manutenzioni"),
         Lista({"Manutenzione ordinaria caldaia", "Manutenzione impianto di climatizzazione", "Manutenzione del verde",
                "Canone di assistenza tecnica", "Verifica periodica impianto di messa a terra"}),
         QStringLiteral("ORE"), 3000, 5500},
        {QStringLiteral("Consulenze"),
         Lista(
             {"Consulenza tecnica", "Sopralluogo e preventivo", "Progettazione impianto", "Pratica di certificazione"}),
         QStringLiteral("ORE"), 4500, 9000},
        {QStringLiteral("Trasporti"),
         Lista({"Trasporto e consegna", "Diritto di chiamata", "Trasporto con gru", "Smaltimento imballaggi"}),
         QStringLiteral("PEZZI"), 1500, 12000},
        {QStringLiteral("Noleggi"),
         Lista({"Noleggio ponteggio", "Noleggio betoniera", "Noleggio piattaforma aerea",
                "Noleggio martello demolitore"}),
         QStringLiteral("ORE"), 1200, 9000},
        {QStringLiteral("Riparazioni"),
         Lista(
             {"Riparazione elettroutensili", "Riparazione serrature", "Sostituzione componenti", "Pronto intervento"}),
         QStringLiteral("ORE"), 3500, 6500},
    };
    return list;
}

const QStringList &QualificheServizi()
{
    static const QStringList list = Lista({"", "- operaio specializzato", "- operaio qualificato", "- tecnico senior",
                                           "- apprendista", "- festivo", "- notturno", "- in trasferta", "- urgente"});
    return list;
}

const QStringList &RigheTesto()
{
    static const QStringList list = Lista(
        {"Rif. Vs. ordine n. %1 del %2", "Materiale come da preventivo n. %1 del %2", "Consegna presso il Vs. cantiere",
         "Lavori eseguiti come da rapportino n. %1", "Merce consegnata con D.d.T. n. %1 del %2",
         "Intervento richiesto telefonicamente in data %2", "Garanzia 24 mesi sui materiali forniti"});
    return list;
}

const QStringList &RigheNonImponibili()
{
    static const QStringList list =
        Lista({"Imposta di bollo assolta sull'originale", "Anticipazioni per Vs. conto (art. 15 DPR 633/72)",
               "Spese di trasporto anticipate per Vs. conto", "Diritti di segreteria anticipati"});
    return list;
}

const QStringList &NoteClienti()
{
    static const QStringList list =
        Lista({"Consegna solo al mattino.", "Chiamare prima della consegna.", "Cliente con fido di € 5.000,00.",
               "Inviare le fatture anche per posta elettronica.", "Magazzino chiuso ad agosto.",
               "Referente amministrativo: ufficio contabilità."});
    return list;
}

const QList<QPair<QString, QString>> &NoteDocumenti()
{
    static const QList<QPair<QString, QString>> list = {
        {QStringLiteral("Coordinate bancarie"),
         QStringLiteral("Pagamento a mezzo bonifico bancario.\r\nIntesa Sanpaolo - IBAN IT60X0542811101000000123456")},
        {QString::fromUtf8("Dichiarazione d'intento"),
         QString::fromUtf8("Operazione non imponibile ai sensi dell'art. 8, comma 1, lett. c) del D.P.R. 633/72.\r\n"
                           "Vs. dichiarazione d'intento protocollo n. 12345678 del 15/01.")},
        {QStringLiteral("Inversione contabile"),
         QString::fromUtf8(
             "Operazione soggetta a inversione contabile ai sensi dell'art. 17, comma 6, D.P.R. 633/72.")},
        {QStringLiteral("Contributo CONAI"), QString::fromUtf8("Contributo ambientale CONAI assolto ove dovuto.")},
        {QStringLiteral("Garanzia"),
         QString::fromUtf8("I prodotti sono garantiti 24 mesi dalla data di consegna secondo il Codice del Consumo.")},
        {QStringLiteral("Privacy"),
         QString::fromUtf8(
             "I Vs. dati sono trattati secondo il Regolamento UE 2016/679 per la sola gestione del rapporto.")},
        {QStringLiteral("Merce viaggiante"),
         QString::fromUtf8(
             "La merce viaggia a rischio e pericolo del committente.\r\nReclami entro 8 giorni dal ricevimento.")},
        {QStringLiteral("Pagamento anticipato"),
         QString::fromUtf8("Pagamento anticipato: la merce sarà spedita al ricevimento del bonifico.")},
    };
    return list;
}

QString CodiceFiscalePersona(const QString &cognome, const QString &nome, const QDate &nascita, bool femmina,
                             const QString &comuneNascita)
{
    const QString lettereCognome = SoloLettere(cognome);
    const QString lettereNome = SoloLettere(nome);
    QString consonantiNome = Consonanti(lettereNome);
    if (consonantiNome.size() >= 4)
        consonantiNome = QString(consonantiNome.at(0)) + consonantiNome.at(2) + consonantiNome.at(3);
    static const char mesi[] = "ABCDEHLMPRST";
    const QString code =
        TreLettere(Consonanti(lettereCognome), Vocali(lettereCognome)) + TreLettere(consonantiNome, Vocali(lettereNome))
        + QStringLiteral("%1").arg(nascita.year() % 100, 2, 10, QLatin1Char('0'))
        + QLatin1Char(mesi[nascita.month() - 1])
        + QStringLiteral("%1").arg(nascita.day() + (femmina ? 40 : 0), 2, 10, QLatin1Char('0')) + comuneNascita;
    return code + CarattereControllo(code);
}

QString CodiceComuneNascita(TKRVCasuale &casuale)
{
    static const QStringList codici = Lista({"F205", "H501", "L219", "F839", "A944", "D612", "D969", "L736", "L781",
                                             "G224", "A794", "B157", "G273", "A662", "C351", "G337", "F257", "E506"});
    return casuale.Scelta(codici);
}

QString PartitaIVA(int numero, int ufficio)
{
    const QString base =
        QStringLiteral("%1%2").arg(numero, 7, 10, QLatin1Char('0')).arg(ufficio, 3, 10, QLatin1Char('0'));
    int sum = 0;
    for (int i = 0; i < base.size(); ++i) {
        const int digit = base.at(i).digitValue();
        if (i % 2 == 0) {
            sum += digit;
        } else {
            const int doubled = digit * 2;
            sum += doubled > 9 ? doubled - 9 : doubled;
        }
    }
    return base + QString::number((10 - sum % 10) % 10);
}

QString CodiceAlfanumerico(TKRVCasuale &casuale, int lunghezza)
{
    static const QString caratteri = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
    QString codice;
    for (int i = 0; i < lunghezza; ++i)
        codice += caratteri.at(casuale.Intero(0, int(caratteri.size()) - 1));
    return codice;
}

TKRVCoordinate Coordinate(TKRVCasuale &casuale, const QString &citta)
{
    const TKRVBanca &banca = casuale.Scelta(Banche());
    TKRVCoordinate c;
    c.Paese = QStringLiteral("IT");
    c.Abi = banca.Abi;
    c.Cab = Cifre(casuale, 5);
    c.Conto = Cifre(casuale, 12);
    c.Cin = CarattereControllo(c.Abi + c.Cab + c.Conto);
    // The European check digits: the national code moved behind the country, letters as 10..35, remainder by 97.
    QString digits;
    for (const QChar ch : c.Cin + c.Abi + c.Cab + c.Conto + QStringLiteral("IT00"))
        digits += ch.isDigit() ? QString(ch) : QString::number(ch.toLatin1() - 'A' + 10);
    c.CinEur = QStringLiteral("%1").arg(98 - Modulo97(digits), 2, 10, QLatin1Char('0'));
    c.Swift = banca.Swift;
    c.Banca = banca.Nome;
    c.Agenzia = QStringLiteral("Filiale di ") + citta;
    return c;
}

} // namespace KRVDati
