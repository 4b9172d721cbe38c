kavu_add_fuzzer(reports ReportsFuzz.cpp LIBS kavu_application)
if(TARGET fuzz_reports)
    target_include_directories(fuzz_reports PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
