#pragma once

// The addresses of the product's web pages.
namespace tarnwick::app::web {

inline constexpr char16_t kChangeHistory[] = u"https://tarnwick.example/change-history.txt";
inline constexpr char16_t kPresentation[] = u"https://tarnwick.example/tutorials/presentation";
inline constexpr char16_t kBatchProcessing[] =
    u"https://tarnwick.example/tutorials/batch-processing";
inline constexpr char16_t kScriptFormatting[] =
    u"https://tarnwick.example/tutorials/script-formatting";

}  // namespace tarnwick::app::web
