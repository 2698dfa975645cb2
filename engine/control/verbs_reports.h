#pragma once

#include <string>
#include <vector>

#include "engine/control/asker.h"
#include "engine/control/verbs.h"
#include "engine/core/copy.h"

namespace nimbry {

// The verbs around tags, pages and templates. `arguments` is what stands behind the verb.

/// `tag NAME...`: what the tags print now (reports/tag_table.h), their names without tildes. One name gives its text as
/// it is, several give `NAME<TAB>text` lines with line ends within a text as " / ". Refuses a name that no tag has.
[[nodiscard]] VerbStatus tag_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `generate`: makes the pages now and puts them into the local-save folder, as a due upload does. Waits for them.
[[nodiscard]] VerbStatus generate_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

/// `install-templates`: copies the default templates that are missing into the copy's folder and names them; what is
/// there, under a name of any case, is never touched. Fails at the first that cannot be written.
[[nodiscard]] VerbStatus install_templates_verb(Copy& copy, const std::vector<std::string>& arguments, Asker& asker);

}  // namespace nimbry
