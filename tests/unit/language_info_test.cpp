#include <tamsel3/language_info.h>

#include <quern2/catalog_registry.h>
#include <zandor/catalog.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

using tamsel3::language_info;
using language_t = tamsel3::language_info::language_t;

const std::vector<std::string> cpp_extensions = {"c",   "h",  "cc",  "hh",  "c++", "h++", "cpp", "hpp",
                                                 "cp",  "hp", "cxx", "hxx", "C",   "H",   "CPP", "HPP",
                                                 "tcc", "i",  "ii",  "m",   "mi",  "mm",  "M",   "mii"};
const std::vector<std::string> fortran_extensions = {"f",   "F",   "for", "FOR", "fpp", "FPP", "ftn",
                                                     "FTN", "f77", "F77", "f90", "F90", "f95", "F95",
                                                     "f03", "F03", "f08", "F08", "fi",  "fd"};

// The first use of language_info fills process-wide tables and, through the catalog lookup,
// the catalog's default arguments, both for good. Each check therefore runs in a child
// process of its own, so neither the tests here nor later suites see another's state.
// The child's own failures would stay in its output; the parent shows only its stderr.
[[noreturn]] void report_failures_and_exit() {
  const ::testing::TestResult* result = ::testing::UnitTest::GetInstance()->current_test_info()->result();
  for (int i = 0; i < result->total_part_count(); ++i) {
    const ::testing::TestPartResult& part = result->GetTestPartResult(i);
    if (part.failed()) {
      std::cerr << part.file_name() << ':' << part.line_number() << ": " << part.message() << '\n';
    }
  }
  std::cerr.flush();
  std::exit(result->Failed() ? 1 : 0);
}

void in_child(const std::function<void()>& checks) {
  const std::string style = GTEST_FLAG_GET(death_test_style);
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        quern2::reloadMessageCatalogs();
        checks();
        report_failures_and_exit();
      },
      ::testing::ExitedWithCode(0), "");
  GTEST_FLAG_SET(death_test_style, style);
}

TEST(language_info_test, enumeration_values_are_fixed) {
  EXPECT_EQ(static_cast<int>(language_info::language_cpp), 0);
  EXPECT_EQ(static_cast<int>(language_info::language_csharp), 1);
  EXPECT_EQ(static_cast<int>(language_info::language_fortran), 2);
  EXPECT_EQ(static_cast<int>(language_info::language_other), 3);
  EXPECT_EQ(sizeof(language_t), 4u);
}

TEST(language_info_test, names_without_extension_are_other) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("Makefile"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("orlane_test"), language_info::language_other);
    EXPECT_EQ(language_info::get_language(""), language_info::language_other);
    EXPECT_EQ(language_info::get_language("/home/user/src/Makefile"), language_info::language_other);
  });
}

TEST(language_info_test, every_listed_cpp_extension_but_the_repeats_is_cpp) {
  in_child([] {
    for (const std::string& ext : cpp_extensions) {
      // "c++" and "h++" are possessive repeats in the expression, never the literal text.
      const language_t expected =
          ext == "c++" || ext == "h++" ? language_info::language_other : language_info::language_cpp;
      EXPECT_EQ(language_info::get_language("x." + ext), expected) << ext;
    }
  });
}

TEST(language_info_test, every_listed_fortran_extension_is_fortran) {
  in_child([] {
    for (const std::string& ext : fortran_extensions) {
      EXPECT_EQ(language_info::get_language("x." + ext), language_info::language_fortran) << ext;
    }
  });
}

TEST(language_info_test, csharp_is_lower_case_only) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("x.cs"), language_info::language_csharp);
    EXPECT_EQ(language_info::get_language("x.CS"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.Cs"), language_info::language_other);
  });
}

TEST(language_info_test, single_letters_in_both_cases) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("x.h"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.H"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.c"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.C"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.f"), language_info::language_fortran);
    EXPECT_EQ(language_info::get_language("x.F"), language_info::language_fortran);
    EXPECT_EQ(language_info::get_language("x.fd"), language_info::language_fortran);
  });
}

TEST(language_info_test, case_is_significant) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("a.CPP"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("a.F90"), language_info::language_fortran);
    EXPECT_EQ(language_info::get_language("a.Cpp"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("a.Hpp"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("a.CC"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("a.For"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("a.MM"), language_info::language_other);
  });
}

TEST(language_info_test, plus_signs_repeat_the_letter) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("a.c++"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.h++"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.cc"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("a.ccc"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.cccc"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("a.hh"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("a.hhhh"), language_info::language_cpp);
  });
}

TEST(language_info_test, only_whole_extensions_match) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("x.cppx"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.xcpp"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.f9"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.css"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("x.txt"), language_info::language_other);
  });
}

TEST(language_info_test, paths_go_by_the_last_extension) {
  in_child([] {
    EXPECT_EQ(language_info::get_language("/home/user/project/main.cpp"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("src/solver.f90"), language_info::language_fortran);
    EXPECT_EQ(language_info::get_language("archive.cpp.txt"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("notes.txt.h"), language_info::language_cpp);
  });
}

TEST(language_info_test, extensions_of_each_language) {
  in_child([] {
    EXPECT_EQ(language_info::get_extensions(language_info::language_cpp), cpp_extensions);
    EXPECT_EQ(language_info::get_extensions(language_info::language_fortran), fortran_extensions);
    EXPECT_EQ(language_info::get_extensions(language_info::language_csharp), std::vector<std::string>{"cs"});
    EXPECT_TRUE(language_info::get_extensions(language_info::language_other).empty());
  });
}

TEST(language_info_test, extension_counts_and_first_entries) {
  in_child([] {
    const std::vector<std::string> cpp = language_info::get_extensions(language_info::language_cpp);
    ASSERT_EQ(cpp.size(), 24u);
    EXPECT_EQ(cpp.front(), "c");
    const std::vector<std::string> fortran = language_info::get_extensions(language_info::language_fortran);
    ASSERT_EQ(fortran.size(), 20u);
    EXPECT_EQ(fortran.front(), "f");
    EXPECT_EQ(language_info::get_extensions(language_info::language_csharp).size(), 1u);
  });
}

TEST(language_info_test, names_come_from_the_catalog) {
  in_child([] {
    EXPECT_EQ(language_info::get_localized_name(language_info::language_cpp), "C/C++");
    EXPECT_EQ(language_info::get_localized_name(language_info::language_csharp), "C#");
    EXPECT_EQ(language_info::get_localized_name(language_info::language_fortran), "Fortran");
    EXPECT_EQ(language_info::get_localized_name(language_info::language_other), "Other");
  });
}

TEST(language_info_test, lookup_by_name_inverts_the_names) {
  in_child([] {
    for (const language_t language : {language_info::language_cpp, language_info::language_csharp,
                                      language_info::language_fortran, language_info::language_other}) {
      EXPECT_EQ(language_info::get_language_by_name(language_info::get_localized_name(language)), language);
    }
    EXPECT_EQ(language_info::get_language_by_name("C/C++"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language_by_name("C#"), language_info::language_csharp);
    EXPECT_EQ(language_info::get_language_by_name("Fortran"), language_info::language_fortran);
  });
}

TEST(language_info_test, unknown_names_are_other) {
  in_child([] {
    EXPECT_EQ(language_info::get_language_by_name("Pascal"), language_info::language_other);
    EXPECT_EQ(language_info::get_language_by_name(""), language_info::language_other);
    // Byte for byte: no folding of case or blanks.
    EXPECT_EQ(language_info::get_language_by_name("fortran"), language_info::language_other);
    EXPECT_EQ(language_info::get_language_by_name("C/C++ "), language_info::language_other);
    // Names saved under another catalog language.
    EXPECT_EQ(language_info::get_language_by_name("Andere"), language_info::language_other);
    EXPECT_EQ(language_info::get_language_by_name("Autre"), language_info::language_other);
  });
}

TEST(language_info_test, names_are_kept_after_a_catalog_change) {
  in_child([] {
    // First use with the library's catalog, then another language's catalog takes over.
    EXPECT_EQ(language_info::get_localized_name(language_info::language_other), "Other");
    quern2::registerMessageCatalog(std::make_shared<const ZANDOR_2_16::i18n::catalog_t>(
        "tamsel", "de",
        ZANDOR_2_16::i18n::catalog_t::messages_t{{"pref.editor.language_other", "Andere"},
                                                 {"pref.editor.language_cpp", "C/C++"},
                                                 {"pref.editor.language_csharp", "C#"},
                                                 {"pref.editor.language_fortran", "Fortran"}}));
    EXPECT_EQ(language_info::get_localized_name(language_info::language_other), "Other");
    EXPECT_EQ(language_info::get_language_by_name("Andere"), language_info::language_other);
    EXPECT_EQ(language_info::get_language_by_name("Other"), language_info::language_other);
  });
}

// Out-of-range values add empty rows to the process-wide tables.
TEST(language_info_test, out_of_range_values_give_empty_results) {
  in_child([] {
    for (const int value : {4, 42, -1}) {
      const auto language = static_cast<language_t>(value);
      EXPECT_EQ(language_info::get_localized_name(language), "") << value;
      EXPECT_TRUE(language_info::get_extensions(language).empty()) << value;
    }
    // The empty name row at -1 comes first and now answers to an empty name.
    EXPECT_EQ(language_info::get_language_by_name(""), static_cast<language_t>(-1));
    // The empty extension rows never hide a real one.
    EXPECT_EQ(language_info::get_language("x.cpp"), language_info::language_cpp);
    EXPECT_EQ(language_info::get_language("x.cs"), language_info::language_csharp);
    EXPECT_EQ(language_info::get_language("x.txt"), language_info::language_other);
    EXPECT_EQ(language_info::get_language("Makefile"), language_info::language_other);
  });
}

}  // namespace
