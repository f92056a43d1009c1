#pragma once

#include <string_view>

#include "exchange/file_import.h"
#include "html/html.h"
#include "pages/sharing/sharing_form.h"

namespace orlune {

struct PageContext;

/// More would make a page that nobody reads.
inline constexpr std::size_t kMostPreviewRows = 500;

ImportSums SumsOf(const ImportPlan& plan);

/// What importing `text` into the calendar would do, with a form that posts the same text.
Html WriteImportPreview(const PageContext& context, const SharedCalendar& calendar, const ImportPlan& plan,
                        std::string_view text);

}  // namespace orlune
