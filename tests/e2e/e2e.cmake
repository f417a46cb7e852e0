# The end-to-end tests run the executables themselves.
if(TARGET test_e2e)
  add_dependencies(test_e2e sorvanto sorvanto-db sorvanto-mixersim sorvanto-tour)
endif()
