#pragma once

#include <QLabel>
#include <QString>
#include <QToolButton>
#include <QWidget>

// A master row chosen in a selection dialog: a read-only label showing it
// ("..." when none) that keeps its key as its tag (0 = none), and the button
// that opens the dialog.
class TKRVCampoScelta : public QWidget
{
    Q_OBJECT

public:
    TKRVCampoScelta(const QString &labelName, const QString &buttonName, QWidget *parent = nullptr);

    QLabel *Etichetta() const { return m_etichetta; }
    QToolButton *Pulsante() const { return m_pulsante; }

    int Tag() const { return m_tag; }
    void Imposta(int tag, const QString &text);
    void Svuota();

private:
    QLabel *m_etichetta;
    QToolButton *m_pulsante;
    int m_tag = 0;
};
