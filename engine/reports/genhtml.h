#pragma once

#include "engine/core/copy.h"

namespace nimbry {

/// Makes the pages: the raw line `nimbryraw.txt`, the pages of the numbered templates (page_names.h), and `wx.wml` from
/// `nimbrywap.wml`, in which the degree signs of the tags become " Deg.". Where a template is missing, its page of the
/// first hundred is deleted. With `Main`/`GraphFiles` "True" the graphs are written beside them. Then the highest gust
/// since the last generation begins anew.
///
/// Each file is made in its work file, which then takes the finished one's name. Between two files other events run;
/// meanwhile `htmlGenBusy` is set, and a second call returns at once.
///
/// Bears the tag "genhtml". A template that ends too soon behind a "~" ends the program (template_scanner.h), and so
/// does one from the second hundred while `FTPRemoteFile` has no dot.
void genhtml(Copy& copy);

/// Makes the pages for one who needs them fresh: waits for the end of a generation that is under way, then runs
/// genhtml().
void make_fresh_pages(Copy& copy);

}  // namespace nimbry
