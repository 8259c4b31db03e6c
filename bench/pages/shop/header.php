<!DOCTYPE html>
<html lang="<?= $lang ?>">
<head>
<meta charset="utf-8">
<title><?= htmlspecialchars($title, ENT_COMPAT, 'ISO-8859-1') ?> - <?= htmlspecialchars($shop, ENT_COMPAT, 'ISO-8859-1') ?></title>
<meta name="viewport" content="width=device-width, initial-scale=1">
<link rel="stylesheet" href="<?= $assets ?>/shop.css">
<script src="<?= $assets ?>/shop.js" defer></script>
</head>
<body>
<header>
<a class="logo" href="/"><?= htmlspecialchars($shop, ENT_COMPAT, 'ISO-8859-1') ?></a>
<form action="/search" role="search"><input type="search" name="q" aria-label="Search"><button>Search</button></form>
<p class="account">Hello <?= htmlspecialchars($user, ENT_COMPAT, 'ISO-8859-1') ?> · <a href="/cart"><?= $cart ?> items, <?= $sum ?> EUR</a></p>
<nav><ul>
<?php foreach ($menu as $item): ?>
<li><a href="<?= $item['url'] ?>"><?= htmlspecialchars($item['title'], ENT_COMPAT, 'ISO-8859-1') ?></a></li>
<?php endforeach ?>
</ul></nav>
</header>
