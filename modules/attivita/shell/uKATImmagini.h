#pragma once

#include <QIcon>

// The pictures of the module's commands.
enum class TKATImmagine { Promemoria, Aggiorna, GeneraFattura, Nuovo, Modifica, Fatto, Elimina };

// The picture of the desktop's icon theme, or the style's own where the theme has none.
QIcon KATImmagine(TKATImmagine immagine);
