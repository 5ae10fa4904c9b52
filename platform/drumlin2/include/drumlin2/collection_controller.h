#pragma once

namespace drumlin2 {

/// Controls the collection of analysis results. Only its defaults are needed here.
class ICollectionController {
 public:
  virtual ~ICollectionController();

  /// The default name template of result directories: "r@@@{at}" with the analysis tag,
  /// "r@@@" without (`with_analysis_tag` false). Both pass
  /// `fathel2::ResultDirectoryManager::validateResultDirectoryPattern`. Static text; any thread.
  static const char* getDefaultResultDirectoryName(bool with_analysis_tag);
};

}  // namespace drumlin2
