kavu_add_fuzzer(operations OperationsFuzz.cpp LIBS kavu_application)
if(TARGET fuzz_operations)
    target_include_directories(fuzz_operations PRIVATE ${PROJECT_SOURCE_DIR}/tests)
endif()
