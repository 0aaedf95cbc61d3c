#pragma once

namespace vorn_host {

/// What a drawing says by itself is in one of these. Texts of the design are never translated.
enum class Language { English, Japanese };

}  // namespace vorn_host
