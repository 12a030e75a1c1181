#pragma once

// The module's group in the host's catalogue of rights, and its rights: seeing
// the reminders, and acting on them (generating an invoice, adding, changing,
// marking done, deleting).
inline constexpr char KATGruppoDiritti[] = "Attivita";
inline constexpr char KATDirittoVisualizzazione[] = "Promemoria (visualizzazione)";
inline constexpr char KATDirittoModifica[] = "Promemoria (modifica)";
