#include "resources/strings.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "resources/settings.h"

namespace resources {
namespace {

using Text = std::u16string_view;

/// One text in every language. The columns stand in the order of the offsets.
struct Row {
  std::int32_t id;
  Text german;
  Text english;
  Text french;
  Text italian;
  Text spanish;     // of Spain
  Text portuguese;  // of Brazil
};

constexpr std::array<Text Row::*, std::size(SettingLanguages)> Columns{
    &Row::german, &Row::english, &Row::french, &Row::italian, &Row::spanish, &Row::portuguese};

/// Heads a group for translators; never shown, so the same in every language.
constexpr Row divider(std::int32_t id, Text text) {
  return {id, text, text, text, text, text, text};
}

// Whoever changes a text keeps these in mind:
// - 105 is searched in subjects that 302 wrote, also a colleague's in another language: it is the
//   same in every language, and 302 holds it, followed by a blank.
// - 218 ends with a colon and a blank, which callers cut off; hence no blank before a French colon.
// - 212 is what Outlook calls the radio telephone in the language.
// - English alone has a blank at the end of 515 and 1001; toolbars are found by that name.
constexpr Row Table[] = {
    divider(101, u"********** Client messages **********"),
    {102, u"Timeout beim Warten auf Velnor.Application-Object",
     u"Timed out waiting for Velnor.Application-Object",
     u"Délai d'attente de Velnor.Application-Object dépassé",
     u"Tempo scaduto in attesa di Velnor.Application-Object",
     u"Tiempo de espera agotado para Velnor.Application-Object",
     u"Tempo de espera por Velnor.Application-Object esgotado"},
    {103, u"Timeout beim Warten auf Velnor", u"Timed out waiting for Velnor",
     u"Délai d'attente de Velnor dépassé", u"Tempo scaduto in attesa di Velnor",
     u"Tiempo de espera agotado para Velnor", u"Tempo de espera pelo Velnor esgotado"},
    {104, u"Velnor läßt sich nicht starten. Installieren Sie die Software neu.",
     u"Cannot start Velnor. Please re-install the software.",
     u"Impossible de démarrer Velnor. Réinstallez le logiciel.",
     u"Impossibile avviare Velnor. Reinstallare il software.",
     u"No se puede iniciar Velnor. Vuelva a instalar el software.",
     u"Não é possível iniciar o Velnor. Reinstale o software."},
    {105, u"Tel.", u"Tel.", u"Tel.", u"Tel.", u"Tel.", u"Tel."},

    divider(200, u"********** Number labels **********"),
    {201, u"Termin", u"Appointment", u"Rendez-vous", u"Appuntamento", u"Cita", u"Compromisso"},
    {202, u"Aufgabe", u"Task", u"Tâche", u"Attività", u"Tarea", u"Tarefa"},
    {203, u"Journal", u"Journal", u"Journal", u"Diario", u"Diario", u"Diário"},
    {204, u"Besprechungsanfrage", u"Meeting request", u"Demande de réunion",
     u"Convocazione riunione", u"Convocatoria de reunión", u"Solicitação de reunião"},
    {205, u"Geschäftlich", u"Work", u"Bureau", u"Ufficio", u"Trabajo", u"Comercial"},
    {206, u"Privat", u"Home", u"Domicile", u"Abitazione", u"Particular", u"Residencial"},
    {207, u"Mobil", u"Mobile", u"Mobile", u"Cellulare", u"Móvil", u"Celular"},
    {208, u"Pager", u"Pager", u"Radiomessagerie", u"Cercapersone", u"Localizador", u"Pager"},
    {209, u"Geschäftlich 2", u"Work 2", u"Bureau 2", u"Ufficio 2", u"Trabajo 2", u"Comercial 2"},
    {210, u"Privat 2", u"Home 2", u"Domicile 2", u"Abitazione 2", u"Particular 2",
     u"Residencial 2"},
    {211, u"Weitere", u"Other", u"Autre", u"Altro", u"Otro", u"Outro"},
    {212, u"Funkruf", u"Radio pager", u"Radiotéléphone", u"Radiotelefono", u"Radioteléfono",
     u"Rádio"},
    {213, u"Auto", u"Car", u"Voiture", u"Auto", u"Automóvil", u"Carro"},
    {214, u"Assistent", u"Assistant", u"Assistant", u"Assistente", u"Ayudante", u"Assistente"},
    {215, u"Rückmeldung", u"Return call", u"Rappel", u"Richiamata", u"Devolver llamada",
     u"Retorno de chamada"},
    {216, u"Zentrale Firma", u"Company switchboard", u"Standard de la société",
     u"Centralino aziendale", u"Centralita de la empresa", u"PABX da empresa"},
    {217, u"ISDN Rufnummer", u"ISDN phone number", u"Numéro RNIS", u"Numero ISDN", u"Número RDSI",
     u"Número ISDN"},
    {218, u"Anrufer: ", u"Caller: ", u"Appelant: ", u"Chiamante: ", u"Llamante: ", u"Quem ligou: "},
    {219, u"Haupt", u"Main", u"Principal", u"Principale", u"Principal", u"Principal"},

    divider(300, u"********** Menus **********"),
    {301, u"Anruf: ", u"Call: ", u"Appel: ", u"Chiamata: ", u"Llamada: ", u"Chamada: "},
    {302, u", Tel. ", u", Tel. ", u", Tel. ", u", Tel. ", u", Tel. ", u", Tel. "},
    {303, u"Aktionen...", u"Actions...", u"Actions...", u"Azioni...", u"Acciones...", u"Ações..."},

    divider(500, u"********** Explorer toolbar **********"),
    {501, u"&Wählen", u"&Dial", u"&Appeler", u"&Chiama", u"&Marcar", u"&Discar"},
    {502, u"Rufnummer oder Namen eingeben. Eingabetaste startet Anruf",
     u"Enter phone number or name. Press Enter to start the call",
     u"Entrez un numéro ou un nom. Appuyez sur Entrée pour appeler",
     u"Immettere il numero o il nome. Premere INVIO per chiamare",
     u"Escriba un número o un nombre. Pulse Intro para llamar",
     u"Digite o número ou o nome. Pressione Enter para ligar"},
    {503, u"Wählen", u"Dial", u"Appeler", u"Chiama", u"Marcar", u"Discar"},
    {504, u"Wählen, Anruf annehmen", u"Dial, accept call", u"Appeler, répondre",
     u"Chiama, rispondi", u"Marcar, aceptar llamada", u"Discar, atender chamada"},
    {505, u"Auflegen", u"Hang up", u"Raccrocher", u"Riaggancia", u"Colgar", u"Desligar"},
    {506, u"Verbindung trennen", u"Disconnect call", u"Mettre fin à l'appel", u"Termina chiamata",
     u"Finalizar llamada", u"Encerrar chamada"},
    {507, u"Gespräch übergeben", u"Transfer call", u"Transférer l'appel", u"Trasferisci chiamata",
     u"Transferir llamada", u"Transferir chamada"},
    {508, u"Anrufsteuerung", u"Call manager", u"Gestion des appels", u"Gestione chiamate",
     u"Control de llamadas", u"Controle de chamadas"},
    {509, u"Rufnummer unterdrücken", u"Do not show caller ID", u"Masquer le numéro",
     u"Nascondi numero", u"Ocultar número", u"Ocultar número"},
    {510, u"Unterdrückt die Anzeige der eigenen Rufnummer",
     u"Does not allow your caller ID to be shown", u"Masque votre numéro à votre correspondant",
     u"Nasconde il proprio numero all'interlocutore", u"Oculta su número al interlocutor",
     u"Oculta o seu número para quem recebe a chamada"},
    {511, u"Anruf übernehmen", u"Pick up call", u"Intercepter l'appel", u"Preleva chiamata",
     u"Capturar llamada", u"Capturar chamada"},
    {512, u"Gespräch übernehmen", u"Pick up call", u"Intercepter l'appel", u"Preleva chiamata",
     u"Capturar llamada", u"Capturar chamada"},
    {513, u"Kurzwahl", u"Speed dial", u"Numérotation rapide", u"Chiamata rapida", u"Marcado rápido",
     u"Discagem rápida"},
    {514, u"Kurzwahl", u"Speed dial", u"Numérotation rapide", u"Chiamata rapida", u"Marcado rápido",
     u"Discagem rápida"},
    {515, u"Velnor", u"Velnor ", u"Velnor", u"Velnor", u"Velnor", u"Velnor"},
    {516, u"Velnor Oberfläche anzeigen", u"Display Velnor interface",
     u"Afficher l'interface Velnor", u"Mostra interfaccia Velnor", u"Mostrar interfaz de Velnor",
     u"Exibir interface do Velnor"},
    {517, u"Anruferinfo", u"Caller info", u"Infos appelant", u"Info chiamante",
     u"Datos del llamante", u"Dados de quem ligou"},
    {518, u"Anruferinfo anzeigen", u"Display caller info", u"Afficher les infos sur l'appelant",
     u"Mostra info chiamante", u"Mostrar datos del llamante", u"Exibir dados de quem ligou"},
    {519, u"Aktionen", u"Actions", u"Actions", u"Azioni", u"Acciones", u"Ações"},
    {520, u"Aktionen", u"Actions", u"Actions", u"Azioni", u"Acciones", u"Ações"},
    {521, u"<Keine Rufnummern>", u"<No phone numbers>", u"<Aucun numéro>", u"<Nessun numero>",
     u"<Sin números>", u"<Nenhum número>"},
    {522, u"Neue Aufgabe 'Anrufen'", u"New 'Call' task", u"Nouvelle tâche « Appeler »",
     u"Nuova attività 'Chiama'", u"Nueva tarea 'Llamar'", u"Nova tarefa 'Ligar'"},

    divider(600, u"********** Inspector toolbar **********"),
    {601, u"<Keine Rufnummern>", u"<No phone numbers>", u"<Aucun numéro>", u"<Nessun numero>",
     u"<Sin números>", u"<Nenhum número>"},
    {602, u"Wählen", u"Dial", u"Appeler", u"Chiama", u"Marcar", u"Discar"},
    {603, u"Wählen, Anruf annehmen", u"Dial, accept call", u"Appeler, répondre",
     u"Chiama, rispondi", u"Marcar, aceptar llamada", u"Discar, atender chamada"},
    {604, u"Auflegen", u"Hang up", u"Raccrocher", u"Riaggancia", u"Colgar", u"Desligar"},
    {605, u"Verbindung trennen", u"Disconnect call", u"Mettre fin à l'appel", u"Termina chiamata",
     u"Finalizar llamada", u"Encerrar chamada"},
    {606, u"Rufnummer unterdrücken", u"Do not show caller ID", u"Masquer le numéro",
     u"Nascondi numero", u"Ocultar número", u"Ocultar número"},
    {607, u"Unterdrückt die Anzeige der eigenen Rufnummer",
     u"Does not allow your caller ID to be shown", u"Masque votre numéro à votre correspondant",
     u"Nasconde il proprio numero all'interlocutore", u"Oculta su número al interlocutor",
     u"Oculta o seu número para quem recebe a chamada"},
    {608, u"Gespräch übergeben", u"Transfer call", u"Transférer l'appel", u"Trasferisci chiamata",
     u"Transferir llamada", u"Transferir chamada"},
    {609, u"Anrufsteuerung", u"Call manager", u"Gestion des appels", u"Gestione chiamate",
     u"Control de llamadas", u"Controle de chamadas"},
    {610, u"Aktionen", u"Actions", u"Actions", u"Azioni", u"Acciones", u"Ações"},
    {611, u"Aktionen", u"Actions", u"Actions", u"Azioni", u"Acciones", u"Ações"},

    divider(1000, u"********** Product name **********"),
    {1001, u"Velnor", u"Velnor ", u"Velnor", u"Velnor", u"Velnor", u"Velnor"},
};

constexpr bool sortedAndComplete() {
  for (std::size_t i = 0; i < std::size(Table); ++i) {
    if (i > 0 && Table[i - 1].id >= Table[i].id) return false;
    if (Table[i].id < 0 || Table[i].id >= LanguageStep) return false;
    for (Text Row::*column : Columns)
      if ((Table[i].*column).empty()) return false;
  }
  return true;
}
static_assert(sortedAndComplete(), "rows ascend by id, each with a text in every language");
static_assert(std::size(Table) == 66, "adding a text changes this number too");

}  // namespace

std::optional<std::u16string_view> string(std::int32_t id) noexcept {
  if (id < 0) return std::nullopt;
  const auto language = static_cast<std::size_t>(id / LanguageStep);
  if (language >= Columns.size()) return std::nullopt;
  const Row* row = std::ranges::lower_bound(Table, id % LanguageStep, {}, &Row::id);
  if (row == std::end(Table) || row->id != id % LanguageStep) return std::nullopt;
  return row->*Columns[language];
}

}  // namespace resources
