kavu_add_fuzzer(linkdata LinkDataFuzz.cpp LIBS kavu_application)
if(TARGET fuzz_linkdata)
    target_include_directories(fuzz_linkdata PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
