#pragma once

#include <string>

#include "engine/core/copy.h"

namespace nimbry {

// The text of the three mails, made from the user's template into `ReportsState::mail_body`. `mailGenBusy` is set
// meanwhile, and `PublishState::pending_mail` afterwards. Without a template the mail is empty. Each bears its own name
// as its tag; a template that ends too soon behind a "~" ends the program (reports/template_scanner.h).

/// The mail of the schedule, from `mail_template.txt`.
void genmail(Copy& copy);

/// The alarm's, from `mail_alm_template.txt`; `IsAlarmMail` is set meanwhile.
void genAlarmMail(Copy& copy);

/// The changeover's, from `mail_co_template.txt`, before the day is closed.
void gencomail(Copy& copy);

/// Forgets the mail that is made and has not gone.
void drop_pending_mail(WeatherState& state);

/// The weather in three short lines, as a small display takes it: no degree signs, no blanks before units. The gust is
/// the present one, also in a mail that tells of a wind alarm.
[[nodiscard]] std::string short_weather_text(const Copy& copy);

}  // namespace nimbry
