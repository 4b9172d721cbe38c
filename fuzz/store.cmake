kavu_add_fuzzer(store StoreFuzz.cpp LIBS kavu_application)
if(TARGET fuzz_store)
    target_include_directories(fuzz_store PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
