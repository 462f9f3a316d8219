-- What a fresh installation starts from. The administrator has no password yet and cannot sign in until one is set.

INSERT INTO TEC_USUARIO (CODIGO, NOME, SENHA, ADMINISTRADOR, ATIVO) VALUES ('ADMIN', 'ADMIN', NULL, 'S', 'S');

INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('MAL', 40, '3',
  'Formação do lote da peça: 1 zeros; 2 ordem; 3 ordem e nº da peça; 4 código de barras ou ordem e sequência; 5 ordem e pedido; 6 ordem e NF de retorno');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('MAL', 50, 'N',
  'Imprimir a etiqueta após a baixa de cada peça (S/N)');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('MAL', 60, 'N',
  'Abrir o cadastro de defeitos após a baixa de cada peça (S/N)');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('MAL', 70, 'S',
  'Consumir os fios das reservas da ordem: S sim; N permite baixar peça sem reserva');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('MAL', 90, 'S',
  'Conferir as reservas de fio na ordem de tecelagem (S/N)');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('COM', 80, 'F',
  'F: mostrar o fornecedor dos lotes de fio (cinco primeiros caracteres do lote)');
INSERT INTO TEC_PARAMETRO (GRUPO, NUMERO, VALOR, DESCRICAO) VALUES ('SIS', 20, 'S',
  'S: etiquetas em modo texto por padrão');
