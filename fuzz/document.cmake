kavu_add_fuzzer(document DocumentFuzz.cpp LIBS kavu_application)
if(TARGET fuzz_document)
    target_include_directories(fuzz_document PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
